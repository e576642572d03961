#pragma once

#include <kvAnimationManager2.h>
#include <kvAnimationUtils2.h>
#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <cstdint>
#include <vector>

namespace kv {
namespace detail {
class PlayedValues;
}
} // namespace kv

/// The transport: plays one block, one clip, one sequence, the free curves or every block of the
/// scene against the clock of the host.
///
/// ### Setting up
/// Hand over the manager once (`setAnimationManager`), say how many frames pass in a second
/// (`setFPS`, 25 unless told) and, for local and global playback, the range (`setMinFrame`,
/// `setMaxFrame`). Without a manager everything below still works but evaluates to nothing.
///
/// ### Playing
/// A `play...` operation only sets state. Nothing moves until the host calls `animationLoop()`, its
/// tick, from a timer. A tick asks the clock of the manager how long playback has run, makes a
/// frame of it (continuous, never rounded), evaluates what is played at that frame, writes the
/// values into the scene and tells the listeners (kvAnimationEvent):
///
///     clock -> frame -> evaluated fields -> scene -> sequences of a clip -> listeners
///
/// Frames count from the start frame, forwards or, in reverse, backwards. Blocks and clips that
/// have their repeat flag set when `play` is called wrap around; everything else stops at the end
/// of its range. The tick that has passed the end evaluates the end itself, once, and playback is
/// over. From then on the manager's actual frame is that end, while `getActualFrame()` keeps the
/// overshoot.
///
/// ### Stopping, pausing, jumping
/// `stop()` only clears flags: the scene stays as the last tick left it. `pause()` toggles a flag
/// that only `play(node, reverse)` looks at; the tick does not. `reset`, `gotoStart` and `gotoEnd`
/// stop, evaluate one frame and write it at once, without a tick.
///
/// ### What is kept
/// `getValues()` is the result of the last evaluation. Global playback does not replace it but adds
/// to it: every record since the last block, clip, local or reset evaluation stays in force, so
/// that what an earlier tick wrote keeps being written. The price of a tick does not grow with it,
/// see `animationLoop()`.
///
/// The class has no objects. All state is static and unguarded: every operation belongs on the
/// thread that owns the scene graph. What is played is referenced, never owned; stop before
/// destroying it.
class KV_ANIMATIONS_API kvAnimationController2 {
  public:
    /// What a tick plays. Other values are storable; a tick then only computes its frame.
    enum PlayType : std::int32_t {
        PT_BLOCK = 1,    ///< one block
        PT_CLIP = 2,     ///< one clip, with its sequences
        PT_GLOBAL = 3,   ///< every block of the scene (kvAnimationManager2::getSceneBlocks)
        PT_LOCAL = 4,    ///< the selected curves of the manager
        PT_SEQUENCE = 5, ///< one sequence item
    };

    kvAnimationController2() = delete;

    /// @name Settings
    /// @{

    /// The manager that evaluates; not owned. Null: evaluations yield nothing.
    static void setAnimationManager(kvAnimationManager2* manager);
    /// true keeps ticks from notifying. Cleared by `stop`, `reset`, every jump and the end of a
    /// range.
    static void blockCalls(bool block);
    /// First frame of local and global playback.
    static void setMinFrame(float frame);
    /// Last frame of local and global playback.
    static void setMaxFrame(float frame);
    /// The frame at which the clock's zero lies. Every `play` sets it, so change it afterwards.
    static void setStartFrame(float frame);
    /// The frame at which block, clip and sequence playback ends. Every such `play` sets it.
    static void setEndFrame(float frame);
    /// What the next tick plays, a value of PlayType.
    static void setPlayType(int type);
    /// Frames per second; 25 before the first call. Any value is taken, 0 stands still.
    static void setFPS(float fps);
    static float getFPS();
    /// The frame that the last tick computed. Beyond the range it keeps the overshoot.
    static float getActualFrame();
    /// A copy of the records of the last evaluation, in the order in which they were written;
    /// during global playback of every record accumulated so far, repeats included.
    static std::vector<kvAnimationUtils2::AnimationField> getValues();

    /// @}
    /// @name Starting
    /// Each takes the current time of the manager's clock as the start. A null item changes
    /// nothing.
    /// @{

    /// Plays `block` over its own range, from its end to its start when `reverse`. Loops when the
    /// block's repeat flag is set now. `ignoreActivity` also plays a block that is not active.
    static void play(kvAnimationBlock* block, bool reverse, bool ignoreActivity);
    /// The same from frame `start` to frame `end` (the caller exchanges them for reverse). The
    /// length by which a repeating block wraps stays the block's own, deliberately.
    static void play(kvAnimationBlock* block, float start, float end, bool reverse,
                     bool ignoreActivity);
    /// Executes `sequence` at every whole frame of its range. Never wraps by itself: whether frames
    /// repeat is left as it was, and sequence playback does not look at it.
    static void play(kvAnimationSequence2* sequence, bool reverse);
    /// Plays `clip` over its own range and arms all sequences on its own tracks again.
    static void play(kvAnimationClip* clip, bool reverse, bool ignoreActivity);
    /// The same from frame `start` to frame `end`; here the wrap length is `end - start`.
    static void play(kvAnimationClip* clip, float start, float end, bool reverse,
                     bool ignoreActivity);
    /// Local playback from the manager's actual frame. While paused it only resumes: the start time
    /// stays, so the frames of the pause are skipped. After a fast forward or backward the rate is
    /// divided by 3 first, on every call, because those flags are never cleared. A null node is
    /// kept like any other.
    static void play(const osg::NodePtr& node, bool reverse);
    /// Local playback from the manager's actual frame, whatever was paused.
    static void play(bool reverse);
    /// Plays all scene blocks from the manager's actual frame up to the maximum frame, or down to
    /// the minimum frame. `connectedGlobalSlider` adds the selected curves after the blocks.
    static void playGlobal(bool reverse, bool connectedGlobalSlider, bool ignoreActivity);

    /// @}
    /// @name Transport
    /// @{

    /// Toggles the pause flag and nothing else.
    static void pause();
    /// Ends playback; direction, ignored activity and blocked notifications fall back to false.
    static void stop();
    /// Plays three times as fast; every call multiplies again.
    static void fastForward();
    /// The same, in reverse.
    static void fastBackward();
    /// Does nothing: repetition comes from the repeat flag of the block or clip at `play`.
    static void repeat(bool on);

    /// Stops, then shows the first frame of `block` (five writes for a camera block, so that a host
    /// camera that settles over several updates arrives). Null only stops.
    static void reset(kvAnimationBlock* block);
    /// Stops, then resets the sub-clips and the active blocks of `clip`, each from last to first,
    /// sets the manager's frame to the clip's start and notifies the clip maker; so does every
    /// sub-clip on its way. Null only stops.
    static void reset(kvAnimationClip* clip);

    /// Stops and shows the first frame of what `type` names, evaluated into `getValues()`: first
    /// the notifications, then five writes. The selected curves are evaluated one frame before the
    /// minimum frame, deliberately. A type without its item leaves `getValues()` empty and the
    /// frame as it is; an unknown type writes the present values again.
    static void gotoStart(PlayType type);
    /// Stops and shows the first frame of `block`: five writes, then the play listeners are called.
    /// `getValues()` is left alone. Null: nothing happens, playback goes on.
    static void gotoStart(kvAnimationBlock* block);
    /// The same for a clip, with one write.
    static void gotoStart(kvAnimationClip* clip);
    /// Like `gotoStart(PlayType)` for the last frame, with one write and without the frame's
    /// offset.
    static void gotoEnd(PlayType type);
    /// Stops and shows the last frame of `block`: one write, then the play listeners. Null:
    /// nothing.
    static void gotoEnd(kvAnimationBlock* block);
    static void gotoEnd(kvAnimationClip* clip);

    /// @}
    /// @name The tick
    /// @{

    /// One tick; does nothing unless playing.
    ///
    /// Global playback writes, out of all accumulated records, the last one of each binding, in the
    /// order of their last occurrence; of what is bound to a camera setting also every record of
    /// this tick, since the host's camera listens. A binding whose last record is not-a-number gets
    /// its last number, too, since an integer keeps that. The scene ends up as if all had been
    /// written again, at a price that does not grow from tick to tick.
    ///
    /// That takes writes that set what they name whatever was there. Where a number is made of
    /// several, the way by which it was reached shows in the result, and writing all records again
    /// would give another one:
    /// - the four numbers of a quaternion field, an axis and an angle: each write makes the axis a
    ///   unit vector again;
    /// - distance, height and turntable angle of a camera setting while its from or at is bound as
    ///   well: each is measured from where the other left the camera;
    /// - rotation and scale in the matrix of a plain Transform: the same up to rounding, since each
    ///   write takes the matrix apart and puts it together again.
    static void animationLoop();

    /// Writes `fields` into the scene, in order (kvAnimationUtils2::setRealFieldValue).
    static void execute(std::vector<kvAnimationUtils2::AnimationField> fields);
    /// Writes values by node and attribute name, past all bindings. What an attribute means depends
    /// on the node's core; entries without a value, a node, a core or a known attribute are
    /// skipped:
    /// - ComponentTransform, Transform3D: translateX..Z, scaleX..Z, rotateX..Z (degrees), visible;
    /// - a light: the transform attributes, on its beacon; ambient, diffuse, specular, each with R,
    ///   G, B or A;
    /// - Switch: any; the value, truncated, becomes the choice;
    /// - MaterialGroup: a field of its material, by name, or by name and component letter;
    /// - CameraSetting: fieldOfView (degrees), fStop, focalLength, roll, shutterSpeed,
    ///   focusDistance, height, distance, apertureDiameter, turnTableAngle; from, at, up, each with
    ///   X, Y or Z; translateX..Z, rotateX..Z of the node.
    ///
    /// Each entry on a camera setting sends the host "activateCamera" first and hands it the
    /// camera's from, at and up last, also when the attribute is unknown.
    static void execute(std::vector<kvAnimationManager2::AnimationMap> maps);

    /// The node whose transform is written for `node`: kvAnimationManager2::resolveTransformNode.
    static osg::NodePtr resolveTransformNode(const osg::NodePtr& node);

    /// @}

  private:
    friend struct kvTestAccess<kvAnimationController2>;

    // Jumps: evaluate an item (or what a play type names) at one frame and set the manager's frame.
    template <class Item>
    static void jump(Item* item, float frame, int writes);
    static void jump(PlayType type, bool toStart);
    static void jumpGlobal(bool toStart);
    static float selectedFrame(bool toStart);

    // The tick, by play type.
    static void tickBlock();
    static void tickClip();
    static void tickGlobal();
    static void tickLocal();
    static void tickSequence();
    static void wrapIfRepeating();
    static bool insideItem();
    static bool leftRange(float& frame);
    static bool wholeFrameChanged(int& frame);

    static void notifyClipMaker();
    static void notifyGlobal();
    static void notifyLocal();

    static kvAnimationManager2* _am;
    static bool _blocking;
    static float _minFrame, _maxFrame;
    static float _startFrame, _endFrame;
    static float _actualFrame;
    static kv::detail::PlayedValues _values;
    static kvAnimationBlock* _playingBlock;
    static kvAnimationClip* _playingClip;
    static kvAnimationSequence2* _playingSequence;
    static osg::NodePtr _node;
    static bool _playing, _pausing, _repeating, _ffw, _fbw, _reverse;
    static bool _connectedGlobalSlider;
    static bool _ignoreActivity;
    static float _oldFrame;
    static float _duration;
    static float _fps;
    static double _simTime, _startTime, _timeDiff;
    static PlayType _pt;
};
