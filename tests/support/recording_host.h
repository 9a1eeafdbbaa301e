#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/cwnd.h"
#include "platform/host_services.h"

namespace qvx::test {

/// Host of a test: installs itself for its lifetime, keeps what the engine says and answers from a script.
class RecordingHost : public HostServices
{
public:
    RecordingHost();
    ~RecordingHost() override;
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    struct Box
    {
        std::wstring text;
        unsigned flags = 0;
        bool operator==(const Box&) const = default;
    };

    std::vector<Box> boxes;                                        ///< message boxes in order
    std::deque<int> answers;                                       ///< next buttons; when none is left, Yes or OK
    bool isAbortKeyDown = false;                                   ///< answer to the abort key
    int looksUntilAbort = -1;                                      ///< the key goes down after so many looks
    std::function<bool()> abortKey;                                ///< asked, too, at every look
    int abortKeyLooks = 0;                                         ///< how often the engine looked
    std::map<std::pair<std::wstring, std::wstring>, int> profile;  ///< (section, key) -> integer
    MemoryStatus memory{.totalPhysical = 16ULL << 30, .availablePhysical = 8ULL << 30};
    int processors = 4;
    std::wstring executableFolder;           ///< empty: the real one
    std::wstring currentFolder;              ///< empty: the real one
    std::vector<std::wstring> deletedFiles;  ///< asked to delete; they are deleted if they exist
    std::wstring debugOutput;

    /// Texts of the boxes.
    std::vector<std::wstring> BoxTexts() const;

    int MessageBox(const std::wstring& text, unsigned flags) override;
    bool IsAbortKeyDown() override;
    int ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue) override;
    MemoryStatus Memory() override { return memory; }
    int ProcessorCount() override { return processors; }
    std::wstring ExecutableFolder() override;
    std::wstring CurrentFolder() override;
    bool DeleteFile(const std::wstring& path) override;
    void DebugOutput(const std::wstring& text) override { debugOutput += text; }

private:
    HostServices* previous_;
};

/// Solver window of a test: keeps the list lines and the status lines.
class RecordingWindow : public CWnd
{
public:
    struct Line
    {
        std::wstring text;  ///< without the "[HH:MM:SS] " that begins it
        std::wstring status;
        bool operator==(const Line&) const = default;
    };

    std::vector<Line> lines;                ///< list lines (message 1124)
    std::vector<std::wstring> rawTexts;     ///< list lines with their time
    std::vector<std::wstring> statusLines;  ///< status lines (message 1126); "" clears
    std::vector<UINT> messages;             ///< every message in order
    int raised = 0;                         ///< times brought to the top

    /// True when a list line with this text and status was posted.
    bool HasLine(const std::wstring& text, const std::wstring& status) const;

    int PostMessageW(UINT message, WPARAM wParam, LPARAM lParam) override;
    void* GetSafeHwnd() const override { return const_cast<RecordingWindow*>(this); }
    void BringWindowToTop() override { ++raised; }
};

}  // namespace qvx::test
