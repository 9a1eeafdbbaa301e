#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "support/model_log.h"
#include "support/recording_host.h"

namespace qvx::test {

/// A portal frame that passes every check without a warning, with a window, a log and a host that record.
///
///     2 ------- 3      columns 10 high (members 1 and 3), beam 10 long (member 2),
///     |         |      both feet fixed
///     1         4
class InputCheckTest : public testing::Test
{
protected:
    InputCheckTest()
    {
        model.solverType = DoubleSkyline;
        model.materials = {{.id = 1, .E = 29e6, .nu = 0.3, .Wc = 0.28, .Tc = 6.5e-6}};
        SetText(model.materials[0].label, L"Steel");
        model.sections = {{.id = 1, .A = 10, .Ay = 5, .Az = 5, .Iz = 100, .Iy = 100, .J = 150}};
        SetText(model.sections[0].label, L"Box");
        model.thicknesses = {{.id = 1, .t = 1}};
        model.nodes = {{.id = 1, .x = 0, .y = 0},
                       {.id = 2, .x = 0, .y = 10},
                       {.id = 3, .x = 10, .y = 10},
                       {.id = 4, .x = 10, .y = 0}};
        model.beams = {
            {.id = 1, .node1 = 1, .node2 = 2}, {.id = 2, .node1 = 2, .node2 = 3}, {.id = 3, .node1 = 4, .node2 = 3}};
        model.supports = {{.id = 1, .flag = L"111111"}, {.id = 4, .flag = L"111111"}};
        model.loadCases = {{.id = 1}};
        SetText(model.loadCases[0].label, L"DEAD");
        model.caseLoads.resize(1);
        model.selfWeightFactor = -1;
        model.loadCombs.resize(1);
        model.loadCombs[0].cases.resize(1);
        SetText(model.loadCombs[0].cases[0].label, L"DEAD");
        model.set_solver_wnds(&window);
    }

    int Check(int mode = 0, bool isSilent = false) { return model.CheckInputData(mode, isSilent); }

    /// List lines that are no "OK".
    std::vector<RecordingWindow::Line> Findings() const
    {
        std::vector<RecordingWindow::Line> findings;
        for (const auto& line : window.lines)
            if (line.status != L"OK")
                findings.push_back(line);
        return findings;
    }

    /// Answers the next question No.
    void AnswerNo() { host.answers.push_back(kIdNo); }

    RecordingHost host;
    CjxStruct model;
    RecordingWindow window;
    ModelLog log{model};
};

using LineList = std::vector<RecordingWindow::Line>;
using Texts = std::vector<std::wstring>;

}  // namespace qvx::test
