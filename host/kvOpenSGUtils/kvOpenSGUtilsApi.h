#pragma once

/// @file
/// The export macro of the scene-graph helpers.

#if defined(_WIN32) && !defined(KV_STATIC_HOST)
#if defined(kvOpenSGUtils_EXPORTS)
#define KV_OPENSG_UTILS_API __declspec(dllexport)
#else
#define KV_OPENSG_UTILS_API __declspec(dllimport)
#endif
#else
#define KV_OPENSG_UTILS_API
#endif
