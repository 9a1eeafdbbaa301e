#include "rc/concrete.h"

#include "rc/concrete_code.h"

double CConcrete::Note(const char* name, double value, const char* clause, const char* before,
                       const char* equation) const
{
    return qvx::Noted(trace_, {name, value, qvx::ClauseOf(code_, clause, before), equation});
}
