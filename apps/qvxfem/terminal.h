#pragma once

#include <chrono>
#include <cstdio>
#include <string>

#include "platform/host_services.h"

namespace qvx::app {

/// Width that a terminal line may fill, and whether the stream is one.
bool IsTerminal(std::FILE* stream);

/// How much a run tells while it goes on.
enum class Telling {
    Nothing,   ///< no progress
    Progress,  ///< on a terminal one line with percent and the running step, written over again and again
    Lines,     ///< the engine's lines as they come
};

/// What a run shows while it goes on, on the error stream.
class Progress
{
public:
    explicit Progress(Telling telling);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// A list line of the engine without its time.
    void ShowStep(const std::string& text, const std::string& status);
    /// A status line of the engine: mostly percent.
    void ShowStatus(const std::string& text);
    /// A line that stays, also when quiet.
    void Say(const std::string& line);
    /// Takes the progress line away.
    void Clear();

private:
    void Draw(bool isDue);

    Telling telling_;
    bool isDrawn_ = false;
    std::string step_;
    std::string status_;
    std::chrono::steady_clock::time_point drawnAt_;
};

/// Answers the engine's questions and stands for the abort key.
class TerminalHost : public HostServices
{
public:
    /// @param isInteractive  questions are asked on the terminal; else they are printed and count as Yes
    /// @param threads        of the solver; 0 leaves the preference
    /// @param sparseBackend  as the preference SparseBackend has it; 0 leaves the preference
    TerminalHost(Progress& progress, bool isInteractive, int threads, int sparseBackend = 0);
    ~TerminalHost() override;

    /// Text of the last message box.
    const std::wstring& LastText() const { return lastText_; }

    int MessageBox(const std::wstring& text, unsigned flags) override;
    bool IsUserThere() override { return isInteractive_; }
    bool IsAbortKeyDown() override;
    int ProfileInteger(const std::wstring& section, const std::wstring& key, int defaultValue) override;

private:
    int Ask(const std::string& question);

    Progress& progress_;
    bool isInteractive_;
    int threads_;
    int sparseBackend_;
    std::wstring lastText_;
    HostServices* previous_;
};

}  // namespace qvx::app
