#pragma once

/// @file
/// The export macro of the animation-node helpers.

#if defined(_WIN32) && !defined(KV_STATIC_HOST)
#if defined(kvOpenSGAnim_EXPORTS)
#define KV_OPENSG_ANIM_API __declspec(dllexport)
#else
#define KV_OPENSG_ANIM_API __declspec(dllimport)
#endif
#else
#define KV_OPENSG_ANIM_API
#endif
