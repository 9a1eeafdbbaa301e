#include "sap2000/sap2000_file.h"

#include <array>
#include <cassert>

#include "model/jx_struct.h"
#include "model/records/text_fields.h"
#include "model/units.h"
#include "sap2000/sap2000_importer.h"

namespace qvx {
namespace {

/// Number of records of each kind that a repair may drop.
struct Census
{
    explicit Census(const CjxStruct& model)
        : counts{model.beams.size(), model.shell4s.size(), model.supports.size(), model.nodalSprings.size()}
    {
        for (const jxCaseLoad& loads : model.caseLoads)
            // All load families that the reader fills: a repair drops loads on elements that it dropped before.
            counts[4] +=
                loads.ndLoads.size() + loads.ptLoads.size() + loads.lnLoads.size() + loads.shell4SurfaceLoads.size();
    }

    static constexpr std::array<const wchar_t*, 5> kNames = {L"members", L"shells", L"supports", L"nodal springs",
                                                             L"loads"};
    std::array<std::size_t, 5> counts;
};

void TellDropped(const Census& before, const Census& after, std::vector<CString>& told)
{
    for (std::size_t i = 0; i < before.counts.size(); ++i) {
        if (after.counts[i] >= before.counts[i])
            continue;
        CString line;
        line.Format(L"%s that refer to nothing in the model are dropped (%d)", Census::kNames[i],
                    static_cast<int>(before.counts[i] - after.counts[i]));
        told.push_back(line);
    }
}

std::wstring ForceName(const CString& name)
{
    constexpr std::pair<const wchar_t*, const wchar_t*> kForces[] = {
        {L"lb", L"lb"},  {L"kip", L"kip"}, {L"N", L"N"},     {L"kN", L"kN"},
        {L"Ton", L"MT"}, {L"Tonf", L"MT"}, {L"Kgf", L"Kgf"},
    };
    for (const auto& [theirs, ours] : kForces)
        // Letter case differs from version to version of the files.
        if (name.CompareNoCase(theirs) == 0)
            return ours;
    return {};
}

void TakeUnits(const CString& names, CjxStruct& model, std::vector<CString>& told)
{
    const std::optional<jxUnit> units = UnitsOfSap2000File(names.Text());
    if (!units) {
        CString line;
        line.Format(L"units \"%s\" are not known; numbers are taken in the units of the model", names.GetString());
        told.push_back(
            names.IsEmpty() ? CString(L"the file names no units; numbers are taken in the units of the model") : line);
        return;
    }
    for (int k = 0; k < kQuantityCount; ++k)
        model.units.unit[k] = units->unit[k];
}

bool HasLoads(const jxCaseLoad& loads)
{
    return !loads.ndLoads.empty() || !loads.ptLoads.empty() || !loads.lnLoads.empty() ||
           !loads.shell4SurfaceLoads.empty();
}

jxLoadComb CombinationOf(const jxLoadCase& loadCase)
{
    jxLoadComb combination;
    SetText(combination.label, loadCase.label);
    SetText(combination.cases.emplace_back().label, loadCase.label);
    return combination;
}

// Load combinations of the file are not read. So that its loads are solved for all the same, each load pattern gets a
// combination of its own, in the place of the one that solves the default case, unless loads have gone there.
void CombineEachPattern(CjxStruct& model, std::size_t nDefaultCases)
{
    assert(nDefaultCases >= 1 && "a repaired model has a load case");
    if (model.loadCases.size() <= nDefaultCases)
        return;
    if (!HasLoads(model.caseLoads.front()))
        model.loadCombs.clear();
    for (std::size_t i = nDefaultCases; i < model.loadCases.size(); ++i)
        model.loadCombs.push_back(CombinationOf(model.loadCases[i]));
    model.OnAddMoreLoadCombination();
}

}  // namespace

std::optional<jxUnit> UnitsOfSap2000File(std::wstring_view names)
{
    const CString text = std::wstring(names);
    int position = 0;
    CString parts[3];
    for (CString& part : parts) {
        part = text.Tokenize(L",", position);
        part.Trim();
    }
    // Lengths are in small letters in the unit table, temperatures in capitals, forces by their own names.
    return ConsistentUnits(ForceName(parts[0]), parts[1].MakeLower().Text(), parts[2].MakeUpper().Text());
}

bool ReadSap2000File(const std::wstring& path, CjxStruct& model, std::vector<CString>& told)
{
    // Before the import too: what the file does not define falls back on the default records, which must be there.
    model.RepaireData();
    const std::size_t nDefaultCases = model.loadCases.size();
    CSap2000Importer importer(path, &model);
    if (!importer.Process())
        return false;
    for (const ImportLoss& loss : importer.Losses())
        told.push_back(loss.Text());
    TakeUnits(importer.FileUnits(), model, told);
    CombineEachPattern(model, nDefaultCases);
    assert(!model.loadCases.empty() && !model.loadCombs.empty() && "a repaired model has both");
    const Census before(model);
    model.RepaireData();
    TellDropped(before, Census(model), told);
    return true;
}

}  // namespace qvx
