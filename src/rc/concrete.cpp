#include "rc/concrete.h"

#include "rc/concrete_code.h"

double CConcrete::Note(const char* name, double value, const char* clause, const char* before,
                       const char* equation) const
{
    if (trace_ != nullptr)
        trace_->Note({name, value, qvx::ClauseOf(code_, clause, before), equation});
    return value;
}
