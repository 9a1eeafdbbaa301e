#pragma once

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "model/findings.h"

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
    /// The next finding is about this record; it may be about several.
    void About(const wchar_t* kind, int id) { pending_.About(kind, id); }
    /// The next finding is about this value of the model file.
    void AboutField(std::string path) { pending_.field = std::move(path); }
    /// The next finding is about the load combination of this index.
    void AboutCombination(std::size_t index) { pending_.combination = static_cast<int>(index); }
    /// Finding without a message of its own.
    void Find(FindingCode code, std::wstring text);
    /// List line with status "WARNING" and a log line, without a finding.
    void WarnOnly(const wchar_t* text);
    /// The same, and a finding.
    void Warn(FindingCode code, const wchar_t* text);
    /// List line with status "NOT OK", a log line (its own text when none is given), a finding, result 0.
    void Refuse(FindingCode code, const wchar_t* text, const wchar_t* logText = nullptr);
    /// List line with status "NOT OK" whose log line and findings stand already; result 0.
    void RefuseOnly(const wchar_t* text);
    /// List line with status "..." and a finding on which the user is asked.
    void List(FindingCode code, const wchar_t* text);
    /// Message box with Yes and No; true for Yes.
    bool Ask(const wchar_t* text) const;
    /// Question whose No refuses the model; that is a finding, without a further message.
    void AskOrRefuse(const wchar_t* text);
    /// The No to a question: list line with status "NOT OK", a log line, a finding, result 0.
    void RefuseAnswer(const wchar_t* text) { Refuse(FindingCode::AnsweredNo, text); }
    /// Formatted log line.
    void Log(const wchar_t* format, ...);

    CjxStruct& model;
    const int mode;               ///< 0 static, 1 frequency
    const bool isSilent;          ///< leaves the length variation questions out
    int result = 1;               ///< 1 when the model may be solved
    bool isUsingFactors = false;  ///< an element has a cracking or stiffness factor other than 1

private:
    Finding pending_;  ///< what the next finding is about
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
void CheckElementShapes(InputCheck& check);       ///< input_check_geometry.cpp
void CheckLinksAgainstSolver(InputCheck& check);  ///< input_check_loads.cpp

// What a model that may be solved says and its author hardly means; findings without messages of their own.
void CheckCombinations(InputCheck& check);     ///< input_check_terms.cpp
void CheckLoadValues(InputCheck& check);       ///< input_check_load_values.cpp
void CheckIdleRecords(InputCheck& check);      ///< input_check_idle.cpp
void CheckReleases(InputCheck& check);         ///< input_check_releases.cpp
void CheckDiaphragmPlanes(InputCheck& check);  ///< input_check_idle.cpp

/// One finding about many records, told when it goes out of scope. The first record gives the text.
class FindingOfMany
{
public:
    FindingOfMany(InputCheck& check, FindingCode code, std::string field = {});
    ~FindingOfMany();
    FindingOfMany(const FindingOfMany&) = delete;
    FindingOfMany& operator=(const FindingOfMany&) = delete;

    /// @param text  makes the text; called for the first record only
    template <class Text>
    void Add(const wchar_t* kind, int id, Text&& text)
    {
        if (finding_.count == 0)
            finding_.text = text();
        finding_.About(kind, id);
    }

private:
    InputCheck& check_;
    Finding finding_;
};

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
