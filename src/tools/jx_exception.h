#pragma once

#include <string>

#include "platform/export.h"

/// Failure of a run: carries the text that the host shows. Thrown by value, caught by reference. It is no
/// std::exception: what has a wide text for the user is told apart from what the library throws.
class QVXFEM_API jxException
{
public:
    /// @param text  not null; copied
    explicit jxException(const wchar_t* text) : text_(text) {}
    /// @param text  taken over
    explicit jxException(std::wstring text) : text_(std::move(text)) {}

    /// The text, valid while the exception lives.
    const wchar_t* GetText() const { return text_.c_str(); }

private:
    std::wstring text_;
};
