#pragma once

/// @file
/// The export macro of the scene-graph extensions.

#if defined(_WIN32) && !defined(KV_STATIC_HOST)
#if defined(kvOpenSGExt_EXPORTS)
#define KV_OPENSG_EXT_API __declspec(dllexport)
#else
#define KV_OPENSG_EXT_API __declspec(dllimport)
#endif
#else
#define KV_OPENSG_EXT_API
#endif
