#pragma once

#include <limits>
#include <vector>

#include "model/jx_struct.h"

namespace qvx {

/// Course of one input check: how findings reach the user, and what earlier stages found.
///
/// A warning is listed and logged, a refusal too and makes the result 0; a question is asked in a message box when
/// boxes may be shown, and counts as answered Yes when not. Checking goes on after every finding, so that all errors
/// of a model stand in one log.
class InputCheck
{
public:
    InputCheck(CjxStruct& model_, int mode_, bool isSilent_) : model(model_), mode(mode_), isSilent(isSilent_) {}

    /// Log line ahead of a block of checks.
    void Heading(const wchar_t* text) { model.LogLine(text); }
    /// List line with status "WARNING", and a log line.
    void Warn(const wchar_t* text);
    /// List line with status "NOT OK", a log line (its own text when none is given), result 0.
    void Refuse(const wchar_t* text, const wchar_t* logText = nullptr);
    /// List line with status "NOT OK" whose log line was written before; result 0.
    void RefuseLogged(const wchar_t* text);
    /// List line with status "...", for a finding on which the user is asked.
    void List(const wchar_t* text);
    /// Message box with Yes and No; true for Yes.
    bool Ask(const wchar_t* text) const;
    /// Question whose No refuses the model without a further message.
    void AskOrRefuse(const wchar_t* text);
    /// Formatted log line.
    void Log(const wchar_t* format, ...);

    CjxStruct& model;
    const int mode;               ///< 0 static, 1 frequency
    const bool isSilent;          ///< leaves the length variation questions out
    int result = 1;               ///< 1 when the model may be solved
    bool isUsingFactors = false;  ///< an element has a cracking or stiffness factor other than 1
};

enum CheckMode : int { kStaticCheck = 0, kFrequencyCheck = 1 };

/// The stages of the check, in their order; each in the file of its subject.
void LimitSettings(InputCheck& check);            ///< input_check_settings.cpp
void CheckMassCombination(InputCheck& check);     ///< input_check_settings.cpp
void CheckConsistency(InputCheck& check);         ///< input_check_settings.cpp
void CheckBoundaryConditions(InputCheck& check);  ///< input_check_boundary.cpp
void CheckProperties(InputCheck& check);          ///< input_check_properties.cpp
void CheckNodes(InputCheck& check);               ///< input_check_nodes.cpp
void CheckMembers(InputCheck& check);             ///< input_check_members.cpp
void CheckMergeableNodes(InputCheck& check);      ///< input_check_nodes.cpp
void CheckMemberLengths(InputCheck& check);       ///< input_check_members.cpp
void CheckShellGeometry(InputCheck& check);       ///< input_check_shells.cpp
void CheckShells(InputCheck& check);              ///< input_check_shells.cpp
void CheckLoads(InputCheck& check);               ///< input_check_loads.cpp
void DeriveNonlinearity(InputCheck& check);       ///< input_check_loads.cpp
void CheckDiaphragms(InputCheck& check);          ///< input_check_loads.cpp
void CheckLinksAgainstSolver(InputCheck& check);  ///< input_check_loads.cpp

/// Logs every factor of an element that is not above 0, marks the check as using factors for every one that is not 1.
/// @return whether all factors are valid
bool CheckStiffnessFactors(InputCheck& check, const wchar_t* element, int id, const std::vector<double>& factors);
/// The same for a cracking factor, which lies above 0 and is at most 1.
bool CheckCracking(InputCheck& check, const wchar_t* element, int id, double cracking);

/// Shortest and longest of a set of lengths with the elements they belong to; the first of equals counts.
struct LengthRange
{
    double shortest = std::numeric_limits<double>::max();
    double longest = 0;
    int shortestId = 0;
    int longestId = 0;

    void Add(double length, int id);
    double Ratio() const { return longest / shortest; }
};

}  // namespace qvx
