#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/export.h"

namespace qvx {

/// How much a finding weighs.
enum class Severity : unsigned char {
    Note,     ///< worth knowing; sound models have notes
    Warning,  ///< the model probably says something else than its author means
    Error,    ///< the model is refused, or a combination is not to be relied on
};

/// Who found it: the findings of a stage are dropped when the stage runs again.
enum class FindingStage : unsigned char {
    Reading,  ///< the reader of a file
    Edit,     ///< an operation on the model; kept until another model is read
    Check,    ///< CheckInputData
    Modes,    ///< the frequency run; dropped with its results
    Run,      ///< the analysis; dropped with its results
};

/// A record that a finding is about.
struct FindingRecord
{
    const wchar_t* kind = L"";  ///< name() of the record: "member"
    int id = 0;
};

/// One thing that the engine found worth telling, as data: whoever shows it takes it from here.
struct QVXFEM_API Finding
{
    static constexpr std::size_t kMostRecords = 20;

    /// Counts the record, and keeps it when it is one of the first.
    void About(const wchar_t* kind, int id);

    Severity severity = Severity::Note;
    FindingStage stage = FindingStage::Check;
    const char* code = "";   ///< stable word of the catalogue (model/findings.h): "load-off-member"
    bool isReliable = true;  ///< false: the numbers of its combination are not to be relied on
    std::wstring text;       ///< one line
    std::wstring remedy;     ///< what to do about it; empty when there is nothing to do
    std::size_t count = 0;   ///< records that it is about
    int combination = -1;    ///< index of the load combination; -1 when it is about none
    std::string field;       ///< path in the model file: "settings.numberOfSegments"; empty when it is about none
    std::vector<FindingRecord> records;  ///< the first of them
};

/// All findings of a model: those of the reader, of the check and of the run, each in the order in which it came.
class QVXFEM_API FindingList
{
public:
    /// Adds a finding behind those of its stage.
    void Add(Finding finding);
    /// Forgets the findings of a stage.
    void Drop(FindingStage stage);
    /// How many there are of a severity.
    std::size_t Count(Severity severity) const;

    bool empty() const { return findings_.empty(); }                                  ///< nothing was found
    std::size_t size() const { return findings_.size(); }                             ///< of all stages and severities
    std::vector<Finding>::const_iterator begin() const { return findings_.begin(); }  ///< the first of all stages
    std::vector<Finding>::const_iterator end() const { return findings_.end(); }      ///< behind the last

private:
    std::vector<Finding> findings_;
};

}  // namespace qvx
