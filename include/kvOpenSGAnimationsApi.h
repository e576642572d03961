#pragma once

/// @file
/// The export macro of the library and the forward declarations that its headers share.

#if defined(_WIN32)
#if defined(KV_ANIMATIONS_BUILD)
#define KV_ANIMATIONS_API __declspec(dllexport)
#else
#define KV_ANIMATIONS_API __declspec(dllimport)
#endif
#else
#define KV_ANIMATIONS_API __attribute__((visibility("default")))
#endif

class kvAnimationAttachmentInteraction;
class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationController2;
class kvAnimationConverter;
class kvAnimationCurve;
class kvAnimationEvent;
class kvAnimationManager2;
class kvAnimationSequence2;
class kvAnimationTrack;
class kvAnimationUtils2;
class kvControlPoint;
class kvControlPointManager;

/// The one friend of every class here. The library never defines it: the tests specialise it for a
/// class when they must see a field that the interface does not show.
template <class T>
struct kvTestAccess;
