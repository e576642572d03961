#pragma once

/// @file
/// The export macro of the text and message helpers.

#if defined(_WIN32) && !defined(KV_STATIC_HOST)
#if defined(kvUtils_EXPORTS)
#define KV_UTILS_API __declspec(dllexport)
#else
#define KV_UTILS_API __declspec(dllimport)
#endif
#else
#define KV_UTILS_API
#endif
