#pragma once

#include <string>

#include "platform/export.h"

/// Failure of a run: carries the text that the host shows. Thrown by value.
class QVXFEM_API jxException
{
public:
    explicit jxException(const wchar_t* text) : text_(text) {}
    explicit jxException(std::wstring text) : text_(std::move(text)) {}

    const wchar_t* GetText() const { return text_.c_str(); }

private:
    std::wstring text_;
};
