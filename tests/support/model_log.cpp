#include "support/model_log.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <sstream>
#include <string_view>

#include <unistd.h>

namespace qvx::test {

namespace {

constexpr std::string_view kStamp = "[0000-00-00 00:00:00]: ";  // 0 stands for any digit

bool BeginsWithStamp(std::string_view text, std::size_t at)
{
    if (text.size() < at + kStamp.size())
        return false;
    const auto matches = [](char shape, char c) { return shape == '0' ? c >= '0' && c <= '9' : c == shape; };
    return std::equal(kStamp.begin(), kStamp.end(), text.begin() + static_cast<std::ptrdiff_t>(at), matches);
}

std::string WithoutLineEnd(std::string entry)
{
    if (!entry.empty() && entry.back() == '\n')
        entry.pop_back();
    return entry;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& ending)
{
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("qvx_test_" + std::to_string(getpid()) + "_" + std::to_string(counter++) + ending);
}

TemporaryFile::~TemporaryFile()
{
    std::error_code error;
    std::filesystem::remove(path_, error);
}

std::string TemporaryFile::Text() const
{
    std::ostringstream text;
    text << std::ifstream(path_, std::ios::binary).rdbuf();
    return text.str();
}

void TemporaryFile::Write(const std::string& text) const
{
    std::ofstream(path_, std::ios::binary) << text;
}

ModelLog::ModelLog(CjxStruct& model) : model_(model)
{
    model_.fileLog.open(file_.Path());
}

std::string ModelLog::Text()
{
    model_.fileLog.flush();
    return file_.Text();
}

std::vector<std::string> ModelLog::Entries()
{
    const std::string text = Text();
    std::vector<std::string> entries;
    std::size_t begin = 0;  // of the text of the entry at hand
    for (std::size_t at = 0; at <= text.size(); ++at) {
        const bool isStamp = BeginsWithStamp(text, at);
        if (!isStamp && at < text.size())
            continue;
        if (begin > 0)
            entries.push_back(WithoutLineEnd(text.substr(begin, at - begin)));
        begin = at + kStamp.size();
    }
    return entries;
}

bool ModelLog::Has(const std::string& entry)
{
    const std::vector<std::string> entries = Entries();
    return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

}  // namespace qvx::test
