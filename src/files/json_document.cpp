#include "files/json_document.h"

#include <algorithm>
#include <cassert>
#include <set>
#include <utility>
#include <vector>

namespace qvx {
namespace {

// No record nests deeper than 6 levels and none has as many as 100 fields. The limits keep hostile files from costing
// more than their own size: the search for repeated keys is linear in the members of an object.
constexpr std::size_t kDeepestNesting = 16;
constexpr std::size_t kMostMembers = 256;
constexpr std::size_t kLongestReason = 240;

// "line 3, column 7" of the character that ends the first `count` characters.
std::string LineAndColumn(std::string_view text, std::size_t count)
{
    const std::string_view read = text.substr(0, std::min(count, text.size()));
    const std::string_view before = read.substr(0, read.empty() ? 0 : read.size() - 1);
    // Counted anew from the text, as the parser tells a byte and an editor shows lines; a fault happens once a file.
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lastBreak = before.rfind('\n');
    const std::size_t column = lastBreak == std::string_view::npos ? read.size() : read.size() - lastBreak - 1;
    return "line " + std::to_string(line) + ", column " + std::to_string(std::max<std::size_t>(column, 1));
}

// The reason alone of a parser message "[json.exception...] parse error at line 1, column 2: reason".
std::string ReasonOf(std::string message)
{
    if (const std::size_t tag = message.find("] "); message.starts_with("[json.") && tag != std::string::npos)
        message.erase(0, tag + 2);
    if (const std::size_t place = message.find(": "); message.starts_with("parse error") && place != std::string::npos)
        message.erase(0, place + 2);
    if (message.size() > kLongestReason) {
        std::size_t end = kLongestReason;
        while (end > 0 && (static_cast<unsigned char>(message[end]) & 0xC0U) == 0x80U)
            --end;  // never through the middle of a UTF-8 character
        message.resize(end);
        message += "...";
    }
    return message;
}

// Keys of a hostile file may be long or carry control characters; a message shows neither.
std::string Printable(std::string place)
{
    if (place.size() > kLongestReason)
        place = place.substr(0, kLongestReason) + "...";
    // The message goes to terminals and logs, where a control character of a stranger's file would act.
    for (char& c : place)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = '?';
    return place;
}

// Builds values bottom up and hands those at the first level to the receiver. The functions in lower case are the
// events of the parser.
class ObjectBuilder : public nlohmann::json_sax<Json>
{
public:
    ObjectBuilder(std::string_view text, JsonReceiver& receiver) : text_(text), receiver_(receiver) {}

    bool null() override { return Take(nullptr); }
    bool boolean(bool value) override { return Take(value); }
    bool number_integer(number_integer_t value) override { return Take(value); }
    bool number_unsigned(number_unsigned_t value) override { return Take(value); }
    bool number_float(number_float_t value, const string_t&) override { return Take(value); }
    bool string(string_t& value) override { return Take(std::move(value)); }
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return Open(Json::object()); }
    bool start_array(std::size_t) override { return Open(Json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& name) override
    {
        assert(!open_.empty() && open_.back().value.is_object() && "a key stands in an object");
        if (open_.size() == 1) {
            if (!rootKeys_.insert(name).second)
                throw JsonFault(name, "the key stands twice in the file");
            receiver_.BeginMember(name);
        }
        open_.back().key = std::move(name);
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& fault) override
    {
        throw JsonFault(LineAndColumn(text_, position), ReasonOf(fault.what()));
    }

private:
    struct Container
    {
        Json value;
        std::string key;        // of the member being read
        std::size_t count = 0;  // of the elements handed over
        bool isHandedOverByPart = false;
    };

    bool Open(Json&& container)
    {
        if (open_.empty() && !container.is_object())
            throw JsonFault("", "expected one JSON object");
        if (open_.size() == kDeepestNesting)
            throw JsonFault(Place(), "nested deeper than " + std::to_string(kDeepestNesting) + " levels");
        // Elements of a list at the first level go to the receiver one by one and are dropped: the file never stands in
        // memory as a whole tree.
        const bool isHandedOverByPart =
            open_.size() == 1 && container.is_array() && receiver_.TakesElements(open_.front().key);
        open_.push_back({std::move(container), {}, 0, isHandedOverByPart});
        return true;
    }

    bool Close()
    {
        assert(!open_.empty() && "closed once for each time it was opened");
        Container done = std::move(open_.back());
        open_.pop_back();
        return open_.empty() || done.isHandedOverByPart || Take(std::move(done.value));
    }

    bool Take(Json&& value)
    {
        if (open_.empty())
            throw JsonFault("", "expected one JSON object");
        Container& parent = open_.back();
        if (open_.size() == 1)
            receiver_.ReceiveMember(parent.key, value);
        else if (parent.isHandedOverByPart)
            receiver_.ReceiveElement(open_.front().key, parent.count++, value);
        else if (parent.value.is_array())
            parent.value.push_back(std::move(value));
        else
            AddMember(parent, std::move(value));
        return true;
    }

    void AddMember(Container& parent, Json&& value)
    {
        assert(parent.value.is_object() && "only an object has members");
        auto& members = parent.value.get_ref<Json::object_t&>();
        if (members.size() == kMostMembers)
            throw JsonFault(Place(), "more than " + std::to_string(kMostMembers) + " members in one object");
        if (!members.emplace(parent.key, std::move(value)).second)
            throw JsonFault(Place(), "the key stands twice in one object");
    }

    // Path of the value being read.
    std::string Place() const
    {
        std::string place;
        for (const Container& container : open_) {
            if (!container.value.is_array())
                place += (place.empty() ? "" : ".") + container.key;
            else
                place +=
                    "[" + std::to_string(container.isHandedOverByPart ? container.count : container.value.size()) + "]";
        }
        return place;
    }

    std::string_view text_;
    JsonReceiver& receiver_;
    std::vector<Container> open_;
    std::set<std::string> rootKeys_;
};

}  // namespace

std::string JsonPath::Text() const
{
    std::string text = parent != nullptr ? parent->Text() : std::string();
    if (index >= 0)
        return text + "[" + std::to_string(index) + "]";
    if (!text.empty() && !key.empty())
        text += ".";
    return text.append(key);
}

JsonFault::JsonFault(std::string place, const std::string& reason)
    : std::runtime_error(reason), place_(Printable(std::move(place)))
{
}

JsonFault::JsonFault(const JsonPath& path, const std::string& reason) : JsonFault(path.Text(), reason) {}

void ParseJsonObject(std::string_view text, JsonReceiver& receiver)
{
    ObjectBuilder builder(text, receiver);
    Json::sax_parse(text.begin(), text.end(), &builder);
}

}  // namespace qvx
