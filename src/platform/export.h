#pragma once

// Marks what the shared library exports; everything else is hidden.
#if defined(_WIN32)
#if defined(QVXFEM_BUILDING)
#define QVXFEM_API __declspec(dllexport)
#else
#define QVXFEM_API __declspec(dllimport)
#endif
#else
#define QVXFEM_API __attribute__((visibility("default")))
#endif
