#pragma once

#include <cstdio>
#include <functional>
#include <string_view>

namespace qvx::app {

/// Makes the three standard streams safe to use, first thing in the program. A stream that the caller has closed is opened
/// on the null device, since the next file that the program opens would take its number, and receive what is meant for the
/// stream; what is written to a standard output that was closed is told as lost all the same. A reader of a pipe that goes
/// away is an error of writing and no signal.
void SecureStandardStreams();

/// A line on the error stream. Nothing that befalls that stream stops a run.
void PrintError(std::string_view line);

/// Prints on the standard output and tells whether all of it arrived; why not stands on the error stream.
/// @param what   of which is told that it cannot be written: "the summary"
/// @param print  prints on the stream that it is given
bool PrintOut(const char* what, const std::function<void(std::FILE*)>& print);

}  // namespace qvx::app
