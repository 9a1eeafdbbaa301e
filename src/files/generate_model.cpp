#include "files/generate_model.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <stdexcept>
#include <type_traits>

#include "files/arguments_reader.h"
#include "files/generator_arguments.h"
#include "files/model_references.h"
#include "model/default_records.h"
#include "model/find_record.h"
#include "operations/generators.h"

namespace qvx {
namespace {

void Make(const FrameArguments& a, CjxStruct& m)
{
    GenerateFrame(m.nodes, m.supports, m.beams, a.xSteps, a.ySteps, a.zSteps, a.makeMembers, a.makeSupports);
}

void Make(const ShellArguments& a, CjxStruct& m)
{
    // The way of making a shell follows from what is given: a key that names the way could contradict the others.
    if (a.lines.empty())
        return GenerateShell(m.nodes, m.shell3s, m.shell4s, a.xSteps, a.ySteps, a.kind);
    if (!a.xSteps.empty() || !a.ySteps.empty())
        throw JsonFault("lines", "a shell is lofted through lines or has steps, not both");
    // The generator knows no file; its reason is told at the key that brought the lines.
    try {
        GenerateShell(m.nodes, m.shell4s, a.lines, a.wrapJ);
    } catch (const std::runtime_error& fault) {
        throw JsonFault("lines", fault.what());
    }
}

void Make(const ArcArguments& a, CjxStruct& m)
{
    GenerateArcBeam(m.nodes, m.beams, a.startAngle, a.endAngle, a.radius, a.segments);
}

void Make(const CircularFrameArguments& a, CjxStruct& m)
{
    GenerateCircularFrame(m.nodes, m.supports, m.beams, a.radialSteps, a.angleSteps, a.heightSteps, a.makeMembers,
                          a.makeSupports);
}

void Make(const SubmeshArguments& a, CjxStruct& m)
{
    // 0 is no id: a corner that the arguments leave out keeps it.
    if (std::any_of(std::begin(a.corners), std::end(a.corners), [](const jxNd& corner) { return corner.id == 0; }))
        throw JsonFault("corners", "expected four nodes with their ids");
    jxShell4 shell = a.shell;
    const auto namesCorner = [](int id, const jxNd& corner) { return id == corner.id; };
    if (std::all_of(std::begin(shell.node), std::end(shell.node), [](int id) { return id == 0; }))
        std::transform(std::begin(a.corners), std::end(a.corners), shell.node, [](const jxNd& n) { return n.id; });
    else if (!std::equal(std::begin(shell.node), std::end(shell.node), std::begin(a.corners), namesCorner))
        throw JsonFault("shell.node", "expected the ids of the corners in their order");
    submesh_shell4(m.nodes, m.shell4s, a.corners, shell, a.nx, a.ny, a.firstNode, a.firstShell);
    // submesh_shell4 gives what is new: the corners and the shell in their first corner are the caller's.
    m.nodes.insert(m.nodes.end(), std::begin(a.corners), std::end(a.corners));
    m.shell4s.push_back(shell);
}

template <class Arguments>
void MakeFrom(std::string_view text, CjxStruct& m)
{
    Make(ReadArguments<Arguments>(text), m);
}

template <class Value>
constexpr std::string_view KindOfValue()
{
    if constexpr (std::is_same_v<Value, bool>)
        return "true or false";
    else if constexpr (std::is_same_v<Value, int>)
        return "integer";
    else if constexpr (std::is_same_v<Value, double>)
        return "number";
    else if constexpr (std::is_same_v<Value, std::vector<double>>)
        return "list of numbers";
    else if constexpr (std::is_same_v<Value, std::vector<std::vector<jxPoint>>>)
        return "list of lists";
    else if constexpr (std::is_array_v<Value>)
        return "list of objects";
    else
        return "object";
}

std::string DefaultOf(bool value)
{
    return value ? "; default true" : "; default false";
}
std::string DefaultOf(int value)
{
    return "; default " + std::to_string(value);
}
// Lists are empty, numbers 0.
template <class Value>
std::string DefaultOf(const Value&)
{
    return {};
}

template <class Arguments>
std::string UsageOf()
{
    constexpr std::size_t kNameWidth = 14;
    constexpr std::size_t kKindWidth = 17;
    std::string text;
    // From the catalogue of the arguments: an argument that is added stands in the help without being told twice.
    ForEachField(FieldsOf<Arguments>::list, [&]<class Field>(const Field& field) {
        std::string name(field.key);
        name.resize(kNameWidth, ' ');
        std::string kind(KindOfValue<typename Field::Value>());
        kind.resize(kKindWidth, ' ');
        std::string line = "  " + name + kind + std::string(field.meaning) + DefaultOf(Arguments{}.*field.member);
        // Without blanks at the end where an argument has no meaning to tell.
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    });
    return text;
}

struct Generator
{
    std::string_view kind;
    void (*make)(std::string_view text, CjxStruct& model);
    std::string (*usage)();
};

constexpr std::array<Generator, 5> kGenerators = {{
    {"frame", MakeFrom<FrameArguments>, UsageOf<FrameArguments>},
    {"shell", MakeFrom<ShellArguments>, UsageOf<ShellArguments>},
    {"arc", MakeFrom<ArcArguments>, UsageOf<ArcArguments>},
    {"circular-frame", MakeFrom<CircularFrameArguments>, UsageOf<CircularFrameArguments>},
    {"submesh", MakeFrom<SubmeshArguments>, UsageOf<SubmeshArguments>},
}};

// Five kinds: a search from the front is as fast as any.
const Generator& FindGenerator(std::string_view kind)
{
    const auto found =
        std::find_if(kGenerators.begin(), kGenerators.end(), [&](const Generator& g) { return g.kind == kind; });
    if (found == kGenerators.end())
        throw FileError("", kind, "there is no such generator");
    return *found;
}

// Keeps the list ascending, as the look-up by id of all later elements asks. O(n) for a list of a few properties.
template <class Record>
void AddMissing(std::vector<Record>& records, int id, Record (*makeDefault)(const jxUnit&), const jxUnit& units)
{
    if (FindOrNull(records, id) != nullptr)
        return;
    Record record = makeDefault(units);
    record.id = id;
    records.insert(std::upper_bound(records.begin(), records.end(), record), record);
    assert(FindOrNull(records, id) != nullptr && "found by its id from now on");
}

// An element names its properties by id, and a model file without them would be refused: what is named has ordinary
// values until the user gives it its own.
void AddNamedProperties(CjxStruct& m)
{
    for (const jxBm& beam : m.beams) {
        AddMissing(m.materials, beam.material, DefaultMaterial, m.units);
        AddMissing(m.sections, beam.section, DefaultSection, m.units);
    }
    const auto addForShells = [&](const auto& shells) {
        for (const auto& shell : shells) {
            AddMissing(m.materials, shell.material, DefaultMaterial, m.units);
            AddMissing(m.thicknesses, shell.thickness, DefaultThickness, m.units);
        }
    };
    addForShells(m.shell3s);
    addForShells(m.shell4s);
}

void Finish(CjxStruct& m)
{
    // The model goes the way of one that was read: sorted, with every reference checked, repaired as the host repairs
    // it. What is generated then never fails where a file would pass.
    std::stable_sort(m.nodes.begin(), m.nodes.end());
    std::stable_sort(m.shell4s.begin(), m.shell4s.end());
    AddNamedProperties(m);
    CheckModelReferences(m);
    m.RepaireData();
}

}  // namespace

std::vector<std::string> GeneratorKinds()
{
    std::vector<std::string> kinds;
    for (const Generator& generator : kGenerators)
        kinds.emplace_back(generator.kind);
    return kinds;
}

std::string GeneratorUsage()
{
    std::string text;
    for (const Generator& generator : kGenerators)
        text += std::string(generator.kind) + "\n" + generator.usage();
    return text;
}

void GenerateModel(std::string_view kind, std::string_view arguments, CjxStruct& model)
{
    const Generator& generator = FindGenerator(kind);
    // Into a model of its own, as a file is read: a fault leaves the host's model as it was.
    CjxStruct fresh;
    fresh.units = model.units;
    try {
        generator.make(arguments, fresh);
        Finish(fresh);
    } catch (const JsonFault& fault) {
        throw FileError("--args", fault.Place(), fault.what());
    }
    model.copy_input(fresh);
    model.ClearResult();
}

}  // namespace qvx
