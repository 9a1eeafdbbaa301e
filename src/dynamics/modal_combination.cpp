#include "dynamics/modal_combination.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "dynamics/inertia_names.h"
#include "dynamics/modal_rules.h"
#include "elements/member/member_curve_value.h"
#include "model/find_record.h"

namespace qvx {

namespace {

const jxCombResult* FindResult(const CjxStruct& model, const CString& label)
{
    for (std::size_t comb = 0; comb < model.loadCombs.size() && comb < model.combResults.size(); ++comb)
        if (std::wcscmp(model.loadCombs[comb].label, label) == 0)
            return model.combResults[comb].displacements.empty() ? nullptr : &model.combResults[comb];
    return nullptr;
}

/// The record of an item in a family: at the item's place, where the ids agree, since every combination lists the same
/// items; else by its id. Several items may have one id (springs of a node).
template <class Record>
const Record* RecordAt(const std::vector<Record>& records, std::size_t place, int id)
{
    if (place < records.size() && records[place].id == id)
        return &records[place];
    return FindOrNull(records, id);
}

/// Factor of the modal result in a combination. The inertia combinations are its parts: they get nothing.
double SpectrumFactorOf(const CjxStruct& model, std::size_t comb)
{
    const bool isPart = comb >= model.loadCombs.size() || BeginsWith(model.loadCombs[comb].label, kInertiaCombWord);
    return isPart ? 0.0 : model.loadCombs[comb].rsFactor;
}

void TellParticipation(CjxStruct& model, int direction)
{
    constexpr double kEnough = 0.9;
    double sum = 0;
    for (const jxResponseSpectrumResult& mode : model.spectrumResults)
        sum += mode.participation[direction];
    CString text;
    text.Format(L"Mass Participation Factor in %s direction = %.3f (must be greater than 0.90)", kDofNames[direction],
                sum);
    if (model.IsPerformingSpectrumAnalysisInDirection(direction))
        model.list_msg(text, sum < kEnough ? L"WARNING" : L"OK");
}

}  // namespace

DominantModes FindDominantModes(const CjxStruct& model)
{
    DominantModes dominant;
    if (!model.bSignedModalResults)
        return dominant;
    double largest[3] = {};
    for (std::size_t mode = 0; mode < model.spectrumResults.size(); ++mode)
        for (int direction = 0; direction < 3; ++direction) {
            const double participation = model.spectrumResults[mode].participation[direction];
            if (participation > largest[direction]) {
                largest[direction] = participation;
                dominant.mode[direction] = static_cast<int>(mode);
            }
        }
    return dominant;
}

/// A mode without a result takes no part: frequencies and the dominant mode are counted without it.
ModalCombination::ModalCombination(CjxStruct& model) : model_(model)
{
    const DominantModes dominant = FindDominantModes(model);
    for (int direction = 0; direction < 3; ++direction) {
        if (!model.IsPerformingSpectrumAnalysisInDirection(direction))
            continue;
        std::vector<const jxCombResult*> results;
        std::vector<double> omegas;
        int signGiver = -1;
        for (std::size_t mode = 0; mode < model.spectrumResults.size(); ++mode) {
            const int number = static_cast<int>(mode) + 1;
            const jxCombResult* result = FindResult(model, InertiaName(kInertiaCombWord, direction, number));
            if (result == nullptr)
                continue;
            if (static_cast<int>(mode) == dominant.mode[direction])
                signGiver = static_cast<int>(results.size());
            results.push_back(result);
            omegas.push_back(std::sqrt(model.spectrumResults[mode].eigenvalue));
        }
        if (!results.empty())
            directions_.push_back(
                {model.spectrumFactor[direction], std::move(results),
                 ModalCombiner(model.modalCombination, std::move(omegas), model.dampingRatio, signGiver)});
    }
    const auto solved = std::find_if(model.combResults.begin(), model.combResults.end(),
                                     [](const jxCombResult& result) { return !result.displacements.empty(); });
    if (solved != model.combResults.end())
        reference_ = &*solved;
}

template <class Record>
void ModalCombination::GatherFamily(std::vector<Record> jxCombResult::*family)
{
    const std::vector<Record>& items = reference_->*family;
    std::vector<Record>& totals = model_.modalResult.*family;
    totals.reserve(items.size());
    std::vector<const Record*> modes;
    for (std::size_t place = 0; place < items.size(); ++place) {
        Record total = items[place];
        SetZero(total);
        for (const Direction& direction : directions_) {
            modes.clear();
            for (const jxCombResult* result : direction.modes)
                modes.push_back(RecordAt(result->*family, place, items[place].id));
            AddCombined(total, direction.factor, modes, direction.rule);
        }
        totals.push_back(total);
    }
}

/// Places at which the modal curve of a member is formed: the equal segments, and every station of a combination to
/// which the curve will be added, so that nothing is read between two values that already bear a root.
std::vector<double> ModalCombination::CurvePlaces(std::size_t place, int memberId) const
{
    std::set<double> places;
    for (int i = 0; i <= model_.numberOfSegments; ++i)
        places.insert(static_cast<double>(i) / model_.numberOfSegments);
    for (std::size_t comb = 0; comb < model_.combResults.size(); ++comb)
        if (SpectrumFactorOf(model_, comb) != 0)
            if (const jxBmVMD* curve = RecordAt(model_.combResults[comb].beamCurves, place, memberId))
                for (const jxVMD& station : curve->vmd)
                    places.insert(station.x);
    return {places.begin(), places.end()};
}

jxBmVMD ModalCombination::CombineCurves(std::size_t place, const jxBmVMD& reference) const
{
    jxBmVMD total{.id = reference.id, .vmd = {}};
    for (const double x : CurvePlaces(place, reference.id))
        total.vmd.push_back({.x = x});
    for (const Direction& direction : directions_) {
        std::vector<jxVMD> values(direction.modes.size());
        std::vector<const jxVMD*> modes(direction.modes.size());
        for (jxVMD& station : total.vmd) {
            for (std::size_t mode = 0; mode < modes.size(); ++mode) {
                const jxBmVMD* curve = RecordAt(direction.modes[mode]->beamCurves, place, reference.id);
                const bool isThere = curve != nullptr && !curve->vmd.empty();
                if (isThere)
                    values[mode] = CurveValueAt(curve->vmd, station.x);
                modes[mode] = isThere ? &values[mode] : nullptr;
            }
            AddCombined(station, direction.factor, modes, direction.rule);
        }
    }
    return total;
}

void ModalCombination::GatherCurves()
{
    const std::vector<jxBmVMD>& items = reference_->beamCurves;
    for (std::size_t place = 0; place < items.size(); ++place) {
        model_.peek_msg();
        model_.modalResult.beamCurves.push_back(CombineCurves(place, items[place]));
    }
}

void ModalCombination::Gather()
{
    if (reference_ == nullptr)
        return;
    GatherFamily(&jxCombResult::displacements);
    GatherFamily(&jxCombResult::supportReactions);
    GatherFamily(&jxCombResult::multiDofConstraintForces);
    GatherFamily(&jxCombResult::nodalSpringReactions);
    GatherFamily(&jxCombResult::coupledSpringReactions);
    GatherFamily(&jxCombResult::beamSpringReactions);
    GatherFamily(&jxCombResult::shell3SpringReactions);
    GatherFamily(&jxCombResult::shell4SpringReactions);
    GatherFamily(&jxCombResult::beamEndForces);
    GatherCurves();
    GatherFamily(&jxCombResult::shell4Stresses);
    DeriveShellStresses(model_, model_.modalResult.shell4Stresses);
    GatherFamily(&jxCombResult::brickStresses);
}

void DeriveShellStresses(const CjxStruct& model, std::vector<jxShellStress>& stresses)
{
    for (jxShellStress& stress : stresses)
        stress.GetStresses(FindById(model.thicknesses, FindById(model.shell4s, stress.id).thickness).t);
}

namespace {

template <class Record>
void AddFamily(std::vector<Record>& results, const std::vector<Record>& modal, double factor)
{
    for (std::size_t place = 0; place < results.size(); ++place) {
        const Record* record = RecordAt(modal, place, results[place].id);
        if (record == nullptr)
            ThrowMissingRecord(RecordValues<Record>::kName, results[place].id);
        AddScaled(results[place], factor, *record);
    }
}

void AddCurves(std::vector<jxBmVMD>& curves, const std::vector<jxBmVMD>& modal, double factor)
{
    for (std::size_t place = 0; place < curves.size(); ++place) {
        const jxBmVMD* record = RecordAt(modal, place, curves[place].id);
        if (record == nullptr)
            ThrowMissingRecord(L"member curve", curves[place].id);
        for (jxVMD& station : curves[place].vmd)
            AddScaled(station, factor, CurveValueAt(record->vmd, station.x));
    }
}

void AddModalResult(const CjxStruct& model, jxCombResult& result, double factor)
{
    const jxCombResult& modal = model.modalResult;
    AddFamily(result.displacements, modal.displacements, factor);
    AddFamily(result.supportReactions, modal.supportReactions, factor);
    AddFamily(result.multiDofConstraintForces, modal.multiDofConstraintForces, factor);
    AddFamily(result.nodalSpringReactions, modal.nodalSpringReactions, factor);
    AddFamily(result.coupledSpringReactions, modal.coupledSpringReactions, factor);
    AddFamily(result.beamSpringReactions, modal.beamSpringReactions, factor);
    AddFamily(result.shell3SpringReactions, modal.shell3SpringReactions, factor);
    AddFamily(result.shell4SpringReactions, modal.shell4SpringReactions, factor);
    AddFamily(result.beamEndForces, modal.beamEndForces, factor);
    AddCurves(result.beamCurves, modal.beamCurves, factor);
    AddFamily(result.shell4Stresses, modal.shell4Stresses, factor);
    DeriveShellStresses(model, result.shell4Stresses);
    AddFamily(result.brickStresses, modal.brickStresses, factor);
}

}  // namespace

}  // namespace qvx

void CjxStruct::CalcModalCombinationResult()
{
    modalResult.clear();
    GetResponseSpectrumResults();
    AddResponseSpectrumResults();
}

bool CjxStruct::GetResponseSpectrumResults()
{
    if (spectrumResults.empty())
        return false;
    if (!modalResult.displacements.empty())
        return true;
    for (int direction = 0; direction < 3; ++direction)
        qvx::TellParticipation(*this, direction);
    qvx::ModalCombination(*this).Gather();
    return true;
}

bool CjxStruct::AddResponseSpectrumResults()
{
    if (spectrumResults.empty())
        return true;
    for (std::size_t comb = 0; comb < combResults.size(); ++comb)
        if (const double factor = qvx::SpectrumFactorOf(*this, comb); factor != 0)
            qvx::AddModalResult(*this, combResults[comb], factor);
    return true;
}
