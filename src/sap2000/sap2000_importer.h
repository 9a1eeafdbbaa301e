#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "model/records/load.h"
#include "model/records/property.h"
#include "platform/cstring.h"
#include "platform/export.h"
#include "sap2000/import_loss.h"

class CjxStruct;

/// Reader of SAP2000 text models (.s2k) of version 15 and later into a model.
///
/// The file is a sequence of tables, one record a line, items of the form key=value between blanks. Its tables are
/// read when they are met, so definitions have to stand before what refers to them; unknown tables are passed
/// over. Numbers are taken as they stand, in the units of the file: the caller sets the model's units.
///
/// The model is appended to. It should be empty but for its default records with id 1 (CjxStruct::RepaireData makes
/// them): imported materials, sections, thicknesses and load cases get ids from 2, and what names an unknown one
/// falls back on id 1. Afterwards RepaireData drops what refers to nothing.
///
/// Reading is lenient: an absent item is 0 or empty, and no content of a file is an error. Losses tells what of the
/// file did not reach the model.
class QVXFEM_API CSap2000Importer
{
public:
    /// @param model  of the caller, outlives the importer; nothing is read yet
    CSap2000Importer(const CString& path, CjxStruct* model);

    /// Reads the file. False only when it cannot be opened, after a message box that says so.
    bool Process();
    /// Reads a model that is already open, from its current position; the path is not used.
    void Process(std::istream& stream);

    /// What the last Process left out or could not take as it stands, in the order of the file.
    const qvx::ImportLosses& Losses() const { return losses_; }
    /// Units that the file says its numbers are in, as it says so: "KN, m, C"; empty when it does not.
    const CString& FileUnits() const { return fileUnits_; }

private:
    friend class Sap2000ImporterAccess;  // tests of the line syntax alone

    // --- Lines and items (sap2000_importer.cpp) -----------------------------------------------------------------
    // Every reader of a table gets the stream, the buffer and the line that was read last, and leaves in line the head
    // of the next table or nothing.

    /// Next line, trimmed; false, with an empty line, at the end of the file or of the buffer.
    bool ReadLine(std::istream& stream, char* buffer, CString& line);
    /// Calls handle(line) for each row up to an empty line or the head of the next table, which stays in line.
    void ForEachRow(std::istream& stream, char* buffer, CString& line, const std::function<void()>& handle);
    void ReadTables(std::istream& stream);
    /// Selects the reader of the head in line; false when there is none.
    bool ReadKnownTable(std::istream& stream, char* buffer, CString& line);
    void NoteUnreadLine(const CString& line);
    void Note(qvx::ImportLossKind kind, const CString& subject);
    void NoteCutName(const CString& name);

    bool IsTableHeaderLine(const CString& line) const;
    /// Value of the first item key=value of the line as it stands, quotes included; empty when there is none. A value
    /// ends at a blank, and an item with a second "=" does not count.
    CString GetSap2000LineItem(const CString& line, const CString& key) const;
    int GetSap2000LineItemInt(const CString& line, const CString& key) const;
    double GetSap2000LineItemDouble(const CString& line, const CString& key) const;
    /// Sends every table head from the start of the file to the debug output.
    void PrintAllTables(std::istream& stream) const;

    // --- Properties and load patterns (sap2000_properties.cpp) --------------------------------------------------
    void Read_PROGRAM_CONTROL(std::istream& stream, char* buffer, CString& line);
    void Read_MATERIAL_PROPERTIES_02_BASIC_MECHANICAL_PROPERTIES(std::istream& stream, char* buffer, CString& line);
    void Read_FRAME_SECTION_PROPERTIES_01_GENERAL(std::istream& stream, char* buffer, CString& line);
    void Read_AREA_SECTION_PROPERTIES(std::istream& stream, char* buffer, CString& line);
    void Read_JOINT_PATTERN_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line);
    void Read_LOAD_PATTERN_DEFINITIONS(std::istream& stream, char* buffer, CString& line);

    // --- Joints, frames, areas (sap2000_geometry.cpp) -----------------------------------------------------------
    void Read_JOINT_COORDINATES(std::istream& stream, char* buffer, CString& line);
    void Read_JOINT_RESTRAINT_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line);
    void Read_JOINT_SPRING_ASSIGNMENTS_1_UNCOUPLED(std::istream& stream, char* buffer, CString& line);
    void Read_CONNECTIVITY_FRAME(std::istream& stream, char* buffer, CString& line);
    void Read_FRAME_SECTION_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line);
    void Read_FRAME_LOCAL_AXES_ASSIGNMENTS_1_TYPICAL(std::istream& stream, char* buffer, CString& line);
    /// Tells what the quarter turn between the local axes of the file and ours, made or not made, leaves to check.
    void NoteAxes();
    void Read_CONNECTIVITY_AREA(std::istream& stream, char* buffer, CString& line);
    void Read_AREA_SECTION_ASSIGNMENTS(std::istream& stream, char* buffer, CString& line);
    /// Element number -> (section, material) of the rows of an assignment table.
    std::map<int, std::pair<CString, CString>> ReadSectionAssignments(std::istream& stream, char* buffer, CString& line,
                                                                      const CString& elementKey,
                                                                      const CString& sectionKey);
    /// Material id of an assignment: the named one, or that of the section for "Default".
    void AssignMaterial(int& material, const CString& section, const CString& name,
                        const std::map<CString, CString>& materialOfSection);

    // --- Loads (sap2000_loads.cpp) ------------------------------------------------------------------------------
    void Read_JOINT_LOADS_FORCE(std::istream& stream, char* buffer, CString& line);
    void Read_FRAME_LOADS_POINT(std::istream& stream, char* buffer, CString& line);
    void Read_FRAME_LOADS_DISTRIBUTED(std::istream& stream, char* buffer, CString& line);
    void Read_AREA_LOADS_UNIFORM(std::istream& stream, char* buffer, CString& line);
    void Read_AREA_LOADS_SURFACE_PRESSURE(std::istream& stream, char* buffer, CString& line);
    /// Loads of the row's load pattern; the first case for an unknown one. Null when the model has no case.
    jxCaseLoad* LoadsOfPattern(const CString& line);
    /// Fraction of the member's length. False when the member or a node is missing or its length is 0.
    bool ConvertAbsDistance2RelDistance(double& relative, int member, double absolute) const;
    /// Distance item of a frame load: relativeKey as it stands, or absoluteKey over the length of the member.
    bool ReadDistance(double& distance, const CString& line, const CString& relativeKey, const CString& absoluteKey);

    CString path_;
    CjxStruct* model_;
    std::map<CString, jxMat> materials_;
    std::map<CString, jxSect> frameSections_;
    std::map<CString, CString> sectionMaterial_;
    std::map<CString, jxThick> areaSections_;
    std::map<CString, CString> areaSectionMaterial_;
    std::map<CString, double> jointPatterns_;  ///< "joint***pattern" -> value
    std::map<CString, int> loadPatterns_;      ///< name -> index of the load case
    int version_ = 0;

    CString fileUnits_;
    qvx::ImportLosses losses_;
    std::map<std::pair<qvx::ImportLossKind, std::wstring>, std::size_t> lossPositions_;
    int lineNumber_ = 0;
    bool isTurned_ = false;      ///< a table of local axes has turned the frames
    CString table_;              ///< name of the table that is being read; empty before the first
    bool isKnownTable_ = false;  ///< a table of ours whose reader an empty line has ended
};
