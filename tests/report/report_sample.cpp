#include "report/report_sample.h"

#include <algorithm>

#include "model/find_record.h"
#include "platform/wide_path.h"

namespace qvx::test {
namespace {

template <class Record, std::size_t N>
void SetLabel(Record& record, const wchar_t (&text)[N])
{
    SetText(record.label, text);
}

void FillProperties(CjxStruct& m)
{
    m.materials.push_back({.id = 1,
                           .label = L"Steel",
                           .E = 29e6,
                           .nu = 0.3,
                           .Wc = 0.2836,
                           .Tc = 6.5e-6,
                           .fc = 0,
                           .fy = 50e3,
                           .fys = 36e3});
    m.materials.push_back({.id = 12,
                           .label = L"Concrete <4 ksi> & \"b\u00E9ton\"",
                           .E = 3.6e6,
                           .nu = 0.2,
                           .Wc = 0.0868,
                           .Tc = 5.5e-6,
                           .fc = 4000,
                           .fy = 60e3,
                           .fys = 40e3});
    m.sections.push_back({.id = 1,
                          .label = L"Rect 6x12",
                          .A = 72,
                          .Ay = 60,
                          .Az = 60.5,
                          .Iz = 864,
                          .Iy = 216,
                          .J = 593.25,
                          .dim = {6, 12}});
    m.sections.push_back({.id = 2, .label = L"unknown", .A = 10, .Ay = 0, .Az = 0, .Iz = 100, .Iy = 50, .J = 20});
    m.thicknesses = {{.id = 1, .label = L"slab", .t = 8},
                     {.id = 2, .label = L"wall", .t = 10.5},
                     {.id = 3, .label = L"dalle mince", .t = 4.25}};
}

void FillGeometry(CjxStruct& m)
{
    m.nodes = {{.id = 1, .x = 0, .y = 0, .z = 0},           {.id = 2, .x = 0, .y = 120, .z = 0},
               {.id = 3, .x = 240, .y = 120, .z = 0},       {.id = 4, .x = 240, .y = 0, .z = 0},
               {.id = 5, .x = 300, .y = 0, .z = 0},         {.id = 6, .x = 310, .y = 0, .z = 0},
               {.id = 7, .x = 310, .y = 10, .z = 0},        {.id = 8, .x = 300, .y = 10, .z = 0},
               {.id = 9, .x = 300, .y = 0, .z = 10},        {.id = 10, .x = 310, .y = 0, .z = 10},
               {.id = 11, .x = 310, .y = 10, .z = 10},      {.id = 12, .x = 300, .y = 10, .z = 10},
               {.id = 1000, .x = 298.5, .y = 12.25, .z = 0}};
    m.beams = {
        {.id = 1, .node1 = 1, .node2 = 2, .section = 1},
        {.id = 2, .node1 = 2, .node2 = 3, .material = 12, .section = 1, .angle = 1.5707963267948966, .cracking = 0.35},
        {.id = 3, .node1 = 3, .node2 = 4, .section = 2, .nonlinear = kTensionOnly, .excluded = 1, .selfWeight = 1}};
    m.beams[1].f_Iz = 0.5;
    m.beams[1].f_Az = 0.25;
    m.shell4s = {
        {.id = 1, .material = 12, .node = {1, 4, 3, 2}, .thickness = 2, .angle = 0.7853981633974483, .cracking = 0.25},
        {.id = 2, .material = 1, .node = {5, 6, 7, 1000}, .thickness = 1, .excluded = 1, .selfWeight = 1}};
    m.shell4s[0].f_Fxx = 0.1;
    m.shell4s[0].f_Vyy = 0.8;
    m.bricks = {{.id = 4, .material = 12, .node = {5, 6, 7, 8, 9, 10, 11, 12}}};
    m.releases = {{.id = 2, .start = L"000001", .end = L"000110"}};
    m.diaphragms = {{.id = 1, .type = 0, .node = {1, 4, 3, 2}}, {.id = 2, .type = 1, .node = {2, 0, 0, 0}}};
}

void FillBoundary(CjxStruct& m)
{
    m.supports = {{.id = 1, .flag = L"111111"}, {.id = 4, .flag = L"111000", .value = {0, -0.5, 0, 0, 0, 0.01}}};
    m.multiDofConstraints = {{.id = 1, .node = {2, 3}, .dof = {kX, kX}},
                             {.id = 2, .node = {2, 3}, .dof = {kOZ, kY}, .factor = {1, -0.125}}};
    m.nodalSprings = {{.id = 3, .flag = L"001200", .k = {1000, 2000.5, 3000, 4e6, 5e6, 6e6}}};
    jxCoupledSpring coupled{.id = 12};
    for (int i = 0; i < 21; ++i)
        coupled.k[i] = 100 * (i + 1);
    m.coupledSprings = {coupled, {.id = 1000, .k = {1.5}}};
    m.beamSprings = {{.id = 1, .flag = L"000000", .k = {10, 20, 30}},
                     {.id = 2, .flag = L"010000", .k = {1, 2, 3}},
                     {.id = 3, .flag = L"000000", .k = {4, 5, 6}}};
    m.shell4Springs = {{.id = 1, .flag = L"002000", .k = {0.5, 0.25, 0.125}}};
}

void FillLoads(CjxStruct& m)
{
    m.loadCases = {{.id = 1, .label = L"DEAD", .type = L"Dead"},
                   {.id = 2, .label = L"NOT <listed>", .type = L"Live", .bIncluded = 0},
                   {.id = 3, .label = L"WIND & snow", .type = L"Wind \u2192 X"}};
    m.caseLoads.resize(3);
    jxCaseLoad& dead = m.caseLoads[0];
    dead.ndLoads = {
        {.id = 2, .dof = kX, .value = 10.5}, {.id = 3, .dof = kOZ, .value = -2000}, {.id = 3, .dof = kY, .value = -7}};
    dead.ptLoads = {{.id = 1, .coordSys = kLocal, .dir = kY, .value = -5, .distance = 0.25},
                    {.id = 2, .coordSys = kGlobal, .bAbsoluteDistance = 1, .dir = kOX, .value = 33, .distance = 60}};
    dead.lnLoads = {
        {.id = 1, .coordSys = kProjected, .dir = kX, .distance1 = 0, .distance2 = 1, .value1 = 1.5, .value2 = 2.5},
        {.id = 2,
         .coordSys = kGlobal,
         .bAbsoluteDistance = 1,
         .dir = kOX,
         .distance1 = 24,
         .distance2 = 120,
         .value1 = -3,
         .value2 = -4}};
    dead.bmThermalLoads = {{.id = 2, .dT = 40}};
    dead.shell4ThermalLoads = {{.id = 1, .dT = -15.5}};
    dead.brickThermalLoads = {{.id = 4, .dT = 25}};
    dead.shell4SurfaceLoads = {{.id = 1, .coordSys = kLocal, .dir = kZ, .value = -0.5},
                               {.id = 2, .coordSys = kGlobal, .dir = kY, .value = 0.75},
                               {.id = 2, .coordSys = kProjected, .dir = kX, .value = 1.25}};
    dead.areaLoads = {
        {.id = 1, .node = {1, 4, 3, 2}, .coordSys = kGlobal, .dir = kZ, .distribution = 0, .value = -0.25},
        {.id = 2, .node = {1, 4, 3, 2}, .coordSys = kLocal, .dir = kZ, .distribution = 3, .value = 9}};
    m.caseLoads[1] = dead;
    m.caseLoads[2].ndLoads = {{.id = 3, .dof = kX, .value = 1234567.891}};
    m.additionalMasses = {
        {.id = 2, .dof = kX, .value = 0.125}, {.id = 2, .dof = kOY, .value = 12.5}, {.id = 3, .dof = kZ, .value = 0.5}};

    m.loadCombs.resize(3);
    SetLabel(m.loadCombs[0], L"1.2 D + 1.6 W");
    m.loadCombs[0].bPDelta = 1;
    m.loadCombs[0].bSteel = 1;
    m.loadCombs[0].bCheckTLD = 1;
    m.loadCombs[0].susLoadFactor = 0.5;
    m.loadCombs[0].cases = {{.label = L"DEAD", .factor = 1.2}, {.label = L"WIND & snow", .factor = 1.6}};
    SetLabel(m.loadCombs[1], L"not solved");
    m.loadCombs[1].bSolve = 0;
    m.loadCombs[1].bCheckLLD = 1;
    SetLabel(m.loadCombs[2], L"<W> \u00E9t\u00E9");
    m.loadCombs[2].bConcrete = 1;
    m.loadCombs[2].rsFactor = 1.25;
    m.loadCombs[2].cases = {{.label = L"WIND & snow", .factor = -1}};
}

jxBmVMD CurveOf(int id, double scale)
{
    jxBmVMD curve{.id = id, .vmd = {}};
    for (int i = 0; i < 3; ++i) {
        const double s = scale * (i + 1);
        curve.vmd.push_back({.x = 0.5 * i,
                             .Fx = -s,
                             .Fy = 2 * s,
                             .Fz = 3,
                             .Mx = 4 * s,
                             .My = i == 1 ? -50.0 : 5.0,
                             .Mz = 6 * s,
                             .Dy = i == 1 ? -0.25 * scale : 0,
                             .Dz = i == 1 ? 1e-4 : 1e-12});
    }
    return curve;
}

jxShellStress ShellStressOf(int id, double scale, double t)
{
    jxShellStress s;
    s.id = id;
    for (int k = 0; k < 5; ++k) {
        const double base = scale * (k + 1);
        const double F[3] = {10 * base, -4 * base, 5 * base};
        const double P[5] = {100 * base, 20 * base, 30 * base, 3 * base, 4 * base};
        std::copy_n(F, 3, s.F[k]);
        std::copy_n(P, 5, s.P[k]);
    }
    for (int i = 0; i < 8; ++i)
        s.fm[i] = scale * (i + 1);
    for (int i = 0; i < 12; ++i)
        s.fp[i] = scale * 10 * (i + 1);
    s.GetStresses(t);
    return s;
}

jxBrickStress BrickStressOf(int id, double scale)
{
    jxBrickStress s{.id = id};
    for (int k = 0; k < 9; ++k) {
        const double S[6] = {scale * (k + 1), 2 * scale, -3 * scale, k == 0 ? 0 : 4 * scale, 0, 0};
        std::copy_n(S, 6, s.S[k]);
    }
    for (int i = 0; i < 24; ++i)
        s.f[i] = scale * (i + 1);
    return s;
}

jxResult6Val Six(int id, double scale)
{
    return {.id = id, .value = {scale, -2 * scale, 1e-11, 4 * scale, 5 * scale, -6 * scale}};
}

std::vector<jxResult6Val> AtAllNodes(const CjxStruct& m, double scale)
{
    std::vector<jxResult6Val> values;
    for (const jxNd& node : m.nodes)
        values.push_back(Six(node.id, scale * node.id));
    return values;
}

void FillStaticResults(CjxStruct& m)
{
    m.combResults.resize(3);
    for (int c = 0; c < 3; ++c) {
        jxCombResult& r = m.combResults[static_cast<std::size_t>(c)];
        const double scale = c + 1;
        r.displacements = AtAllNodes(m, 0.125 * scale);
        r.supportReactions = {Six(1, 10 * scale), Six(4, 20 * scale)};
        r.multiDofConstraintForces = {{.id = 1, .node = {2, 3}, .dof = {kX, kX}, .force = {scale, -scale}},
                                      {.id = 2, .node = {2, 3}, .dof = {kOZ, kY}, .force = {-8 * scale, 64 * scale}}};
        r.nodalSpringReactions = {Six(3, 30 * scale)};
        r.coupledSpringReactions = {Six(12, 40 * scale), Six(1000, 50 * scale)};
        r.beamSpringReactions = {Six(1, scale), Six(2, 2 * scale), Six(3, 3 * scale)};
        r.shell4SpringReactions = {Six(1, 0.5 * scale)};
        for (const jxBm& member : m.beams) {
            const jxBmVMD curve = CurveOf(member.id, scale * member.id);
            r.beamEndForces.push_back({.id = member.id, .start = curve.vmd.front(), .end = curve.vmd.back()});
            r.beamCurves.push_back(curve);
        }
        r.shell4Stresses = {ShellStressOf(1, scale, 10.5), ShellStressOf(2, 0, 8)};
        r.brickStresses = {BrickStressOf(4, scale)};
    }
}

void FillModes(CjxStruct& m)
{
    for (int i = 1; i <= 2; ++i) {
        const double eigenvalue = 39.47841760435743 * i * i;  // (2 pi i)^2
        m.eigenResults.push_back(
            {.eigenvalue = eigenvalue, .errorMeasure = 1.5e-7 * i, .shape = AtAllNodes(m, 0.25 * i)});
        jxResponseSpectrumResult response;
        response.eigenvalue = eigenvalue;
        for (int d = 0; d < 3; ++d) {
            response.participation[d] = 0.5 / (i + d);
            response.displacements[d] = AtAllNodes(m, 0.5 * i + d);
            response.forces[d] = AtAllNodes(m, 2.0 * i + d);
        }
        m.spectrumResults.push_back(response);
    }
}

}  // namespace

void FillReportSample(CjxStruct& model)
{
    model.bInteractive = 0;
    model.modelName = L"Sample <of> everything";
    model.company = L"Smith & Sons \"quoted\"";
    model.engineer = L"Ren\u00E9 \u0141ukasz";
    model.notes[0] = L"first line";
    model.notes[1] = L"second line, it's <b>plain</b>";
    model.selfWeightFactor = -1;
    model.massLoadComb = 2;
    FillProperties(model);
    FillGeometry(model);
    FillBoundary(model);
    FillLoads(model);
    FillStaticResults(model);
    FillModes(model);
}

ReportTest::ReportTest()
{
    FillReportSample(model_);
    model_.documentPath = CString(TextOf(folder_ / "model"));
    report_.model = &model_;
}

std::string ReportTest::Written()
{
    report_.run_report();
    return ReadFile("model.htm");
}

std::string ReportTest::WrittenAsText()
{
    report_.bHtmlTables = 0;
    return Written();
}

std::string SectionIn(const std::string& report, const std::string& anchor)
{
    const std::size_t start = report.find("<h2> <a name=\"" + anchor + "\">");
    if (start == std::string::npos)
        return {};
    const std::size_t next = report.find("<h2> ", start + 1);
    return report.substr(start, (next == std::string::npos ? report.find("</font>", start) : next) - start);
}

testing::AssertionResult Has(const std::string& text, const std::string& part)
{
    if (text.find(part) != std::string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "not there: " << part;
}

testing::AssertionResult Lacks(const std::string& text, const std::string& part)
{
    if (text.find(part) == std::string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "there: " << part;
}

int CountIn(const std::string& text, const std::string& part)
{
    int n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++n;
    return n;
}

}  // namespace qvx::test
