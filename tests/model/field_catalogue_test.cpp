// Files, unit conversion and copies of the input know no member by name: what the catalogue leaves out is lost to all of
// them. A member without an entry shows as bytes that construction fills and no field covers.
#include <new>
#include <set>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "model/struct_fields.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

constexpr auto kMembersOfModel = std::tuple_cat(kConverted, kRunState);

// Constructs without knowing what stood in the memory before, and without initializing what no constructor does.
template <class Object>
[[gnu::noinline]] Object* Construct(void* memory)
{
    return ::new (memory) Object;
}

/// Bytes of an object, as offsets, that construction writes and no field of the list covers.
template <class Object, class List>
std::set<std::size_t> BytesWithoutField(const List& list)
{
    static_assert(alignof(Object) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    std::set<std::size_t> bytes;
    constexpr unsigned char kPatterns[] = {0x5A, 0xA5};  // one of them differs from whatever is written
    for (const unsigned char pattern : kPatterns) {
        std::vector<unsigned char> memory(sizeof(Object), pattern);
        Object* (*volatile construct)(void*) = Construct<Object>;
        Object* object = construct(memory.data());
        std::vector<bool> isCovered(sizeof(Object));
        ForEachField(list, [&](const auto& field) {
            const auto* member = reinterpret_cast<const unsigned char*>(&(object->*field.member));
            for (std::size_t i = 0; i < sizeof(object->*field.member); ++i)
                isCovered[static_cast<std::size_t>(member - memory.data()) + i] = true;
        });
        for (std::size_t i = 0; i < sizeof(Object); ++i)
            if (!isCovered[i] && memory[i] != pattern)
                bytes.insert(i);
        object->~Object();
    }
    return bytes;
}

// Calls visit.operator()<Record>() for every record that the fields of a list hold, at any depth.
template <class List, class Visitor>
void ForEachRecordWithin(const List& list, Visitor&& visit)
{
    ForEachField(list, [&](const auto& field) {
        using Element = typename std::remove_cvref_t<decltype(field)>::Element;
        if constexpr (Described<Element>) {
            visit.template operator()<Element>();
            ForEachRecordWithin(FieldsOf<Element>::list, visit);
        }
    });
}

TEST(FieldCatalogue, EveryMemberOfARecordHasAField)
{
    std::set<std::string> records;
    ForEachRecordWithin(kMembersOfModel, [&]<class Record>() {
        records.insert(typeid(Record).name());
        EXPECT_EQ(BytesWithoutField<Record>(FieldsOf<Record>::list), std::set<std::size_t>()) << typeid(Record).name();
    });
    EXPECT_GT(records.size(), 50U);
}

// The test above would pass with a test that finds nothing.
TEST(FieldCatalogue, AMemberWithoutAFieldIsFound)
{
    struct Record
    {
        int id = 0;
        int inPadding = 0;
        double value = 0;
    };
    const auto list = RecordFields(Always("id", &Record::id, ""), Always("value", &Record::value, ""));
    EXPECT_EQ(BytesWithoutField<Record>(list), (std::set<std::size_t>{4, 5, 6, 7}));
}

// Host channels before the document and the private members behind the results are no data of the model.
TEST(FieldCatalogue, EveryMemberOfTheModelFromUnitsToResultsHasAField)
{
    const RecordingHost host;
    CjxStruct model;
    const auto offset = [&](const auto& member) {
        return static_cast<std::size_t>(reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&model));
    };
    const std::size_t first = offset(model.units);
    const std::size_t last = offset(model.modalResult);
    for (const std::size_t byte : BytesWithoutField<CjxStruct>(kMembersOfModel)) {
        EXPECT_TRUE(byte < first || byte > last) << "byte " << byte << ", units at " << first;
    }
}

TEST(FieldCatalogue, NoKeyStandsTwice)
{
    const auto expectUnique = [](const auto& list, const std::string& name) {
        std::set<std::string_view> keys;
        ForEachField(list, [&](const auto& field) { EXPECT_TRUE(keys.insert(field.key).second) << name << field.key; });
    };
    ForEachRecordWithin(kMembersOfModel,
                        [&]<class Record>() { expectUnique(FieldsOf<Record>::list, typeid(Record).name()); });
    expectUnique(std::tuple_cat(kDocumentFields, kModelLists, kClosingFields), "model file: ");
    expectUnique(std::tuple_cat(kAnalysisSettings, FieldsOf<jxDesignSettings>::list), "settings: ");
    expectUnique(kMembersOfModel, "model: ");
}

}  // namespace
}  // namespace qvx::test
