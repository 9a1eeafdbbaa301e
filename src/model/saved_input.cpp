#include <algorithm>
#include <iterator>

#include "model/struct_fields.h"

namespace {

template <class Value>
void Copy(Value& to, const Value& from)
{
    to = from;
}

template <class Element, std::size_t N>
void Copy(Element (&to)[N], const Element (&from)[N])
{
    std::copy(std::begin(from), std::end(from), to);
}

}  // namespace

// Without links and derived masses, which a run generates anew, and without the bar tables, which every model reads from
// their file: they stand in other lists of the catalogue.
CjxStruct& CjxStruct::copy_input(const CjxStruct& other)
{
    if (this == &other)
        return *this;
    // The catalogue says what input is: a new field is saved and restored by its line there.
    qvx::ForEachField(qvx::kInput, [&](const auto& field) { Copy(this->*field.member, other.*field.member); });
    return *this;
}

void CjxStruct::SaveInputData()
{
    savedInput_.reset();  // first, so that two copies of a large model never stand side by side
    auto saved = std::make_unique<CjxStruct>();
    saved->copy_input(*this);
    savedInput_ = std::move(saved);
}

void CjxStruct::RestoreInputData()
{
    if (savedInput_)
        copy_input(*savedInput_);
}
