#pragma once

namespace qvx {

/// One figure on the way from the data of a design check to its result, as an engineer writes it down.
struct DesignFigure
{
    const char* name;      ///< symbol and unit: "Fcr [ksi]"
    double value;          ///< in that unit
    const char* clause;    ///< of the edition in use: "E3"; a limit or result of ours: empty
    const char* equation;  ///< "E3-2"; empty where the clause gives it no number
};

/// Listens to a design check. The texts of a figure are literals: they outlive the listener.
class DesignTrace
{
public:
    virtual ~DesignTrace() = default;
    /// Called once a figure, in the order in which the check forms them; the figure itself does not outlive the call.
    virtual void Note(const DesignFigure& figure) = 0;
};

/// The value itself, told to the listener if there is one: a formula is written once, whether somebody listens or not.
///
///     const double Fe = Noted(trace, {"Fe [ksi]", pi * pi * E / (slenderness * slenderness), "E3", "E3-4"});
inline double Noted(DesignTrace* trace, const DesignFigure& figure)
{
    if (trace != nullptr)
        trace->Note(figure);
    return figure.value;
}

}  // namespace qvx
