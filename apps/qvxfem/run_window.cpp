#include "run_window.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "platform/cstring.h"

namespace qvx::app {
namespace {

constexpr std::size_t kTimeWidth = 11;  // "[HH:MM:SS] " before a list line

enum EngineMessage : UINT { kListLine = 1124, kStatusLine = 1126 };
enum FactorizationMessage : UINT { kPercent = 1124 };

std::string TextOf(std::uintptr_t buffer)
{
    // A message carries the address of a string that the engine keeps until the run is over.
    const auto* text = reinterpret_cast<const wchar_t*>(buffer);
    return text == nullptr ? std::string() : ToUtf8(text);
}

}  // namespace

std::optional<ListLine> ListLineOf(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != kListLine)
        return std::nullopt;
    ListLine line{.text = TextOf(wParam), .status = TextOf(static_cast<std::uintptr_t>(lParam))};
    // The time of day is for a log; a line that is shown as it comes tells what happens now.
    if (line.text.size() >= kTimeWidth && line.text.front() == '[')
        line.text.erase(0, kTimeWidth);
    return line;
}

int RunWindow::PostMessageW(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const auto line = ListLineOf(message, wParam, lParam)) {
        progress_.ShowStep(line->text, line->status);
    } else if (message == kStatusLine) {
        progress_.ShowStatus(TextOf(wParam));
    }
    return 1;
}

int FactorizationWindow::PostMessageW(UINT message, WPARAM wParam, LPARAM)
{
    if (message == kPercent)
        progress_.ShowStatus(fmt::format("{}%", wParam));
    return 1;
}

}  // namespace qvx::app
