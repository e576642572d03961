#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <string>
#include <vector>

namespace kv::detail {
class ClipRanges;
class RangeWalk;
} // namespace kv::detail

/// @file
/// The track: one row of a clip.

/// One row of a clip: blocks, sub-clips (clips nested in the clip) and sequence items, kept in
/// order of time.
///
/// Ownership. A track owns everything on it and deletes it with itself; an item that was removed
/// belongs to the caller. A copy is deep and every item in it gets a fresh id. An assignment shares
/// the items of its source, so that one of the two must be emptied (clear) before both are
/// destroyed. Nothing checks whether an item is added twice: it is then on the track twice, and
/// must be taken off once before the track is destroyed.
///
/// Order. The getters of frames sort the three lists in place by start frame. Items with equal
/// frames keep their order and frames that are not a number come last; sub-clips are sorted inside
/// as well. Lists of 500 and more items are sorted in parallel, with the same result.
///
/// Ids are compared as 32-bit values, first match first. The last argument of look-ups and
/// removals, \p recursive, makes them go down into the sub-clips to any depth when the track itself
/// does not have the item.
///
/// A clip can never be put below itself: what would do that changes nothing. Not safe for
/// concurrent use.
class KV_ANIMATIONS_API kvAnimationTrack {
  public:
    /// An empty track numbered -1: active, not mirrored, without motion blur.
    kvAnimationTrack();

    /// The same with a number.
    explicit kvAnimationTrack(int number);

    /// A deep copy with fresh ids for all items, drawn for blocks, then sub-clips, then sequences.
    /// Copies of sequence items have their text but not their range; see kvAnimationSequence2.
    kvAnimationTrack(const kvAnimationTrack& other);

    /// Plain assignment of every member: afterwards both tracks share the same items. The items
    /// held until now are not deleted. Changes nothing when it would put a clip below itself.
    kvAnimationTrack& operator=(const kvAnimationTrack& other);

    /// Deletes the blocks, the sub-clips and the sequence items, in this order.
    ~kvAnimationTrack();

    /// Empties the three lists. The items are not deleted.
    void clear();

    /// @{
    /// The track's own flags. They describe the last setter call; evaluation asks the items.
    bool getActive() const { return _active; }
    bool getFliped() const { return _fliped; }
    bool getMotionBlur() const { return _motionBlur; }
    /// @}

    /// @{
    /// The number that the clip gave the track. Not its position: see kvAnimationClip::deleteTrack.
    void setNumber(int number) { _number = number; }
    int getNumber() const { return _number; }
    /// @}

    /// @{
    /// The items, in the order of the last sort.
    const std::vector<kvAnimationBlock*>& getBlocks() const { return _blocks; }
    const std::vector<kvAnimationClip*>& getClips() const { return _clips; }
    const std::vector<kvAnimationSequence2*>& getSequences() const { return _sequences; }
    /// @}

    /// @name Adding
    /// The track owns the item from now on, and its bounds are updated. False for null, and for a
    /// clip that this track is on or below: nothing changes then.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before            .    .    [=== A ===]
    ///   addBlock(B)       [ B ]     [=== A ===]
    /// @endcode
    /// @{
    bool addBlock(kvAnimationBlock* block);
    bool addClip(kvAnimationClip* clip);
    bool addSequence(kvAnimationSequence2* sequence);
    /// @}

    /// @name Removing
    /// The item is found by its id and taken off; it is not deleted and belongs to the caller.
    /// Every track on the way updates its bounds. False when it is not found, and for null.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before            [ B ]     [=== A ===]
    ///   subBlock(B)       .    .    [=== A ===]
    /// @endcode
    /// @{
    bool subBlock(kvAnimationBlock* block, bool recursive);
    bool subBlock(unsigned long id, bool recursive);
    bool subClip(kvAnimationClip* clip, bool recursive);
    bool subClip(unsigned long id, bool recursive);
    bool subSequence(kvAnimationSequence2* sequence, bool recursive);
    bool subSequence(unsigned long id, bool recursive);
    /// @}

    /// @name Finding
    /// Null when not found. Blocks are found by id, by exact name, or by a curve that they hold
    /// (that very object; null is held by none).
    /// @{
    kvAnimationBlock* getBlock(unsigned long id, bool recursive) const;
    kvAnimationBlock* getBlock(std::string name, bool recursive) const;
    kvAnimationBlock* getBlock(kvAnimationCurve* curve, bool recursive) const;
    kvAnimationClip* getClip(unsigned long id, bool recursive) const;
    kvAnimationSequence2* getSequence(unsigned long id, bool recursive) const;
    /// @}

    /// Sorts the three lists by start frame, or by end frame when \p byEnd.
    void sort(bool byEnd);

    /// Brings blocks and sub-clips up to date with their keys (kvAnimationBlock::updateBlockBounds,
    /// kvAnimationClip::sortTracks), caches the true first and last frame of all items, and leaves
    /// the lists sorted by start frame (items that start together by end frame).
    ///
    /// @code
    ///   before            list: B 10-20, A 0-5, C 0-3
    ///   updateBounds()    list: C 0-3, A 0-5, B 10-20; first frame 0, last frame 20
    /// @endcode
    void updateBounds();

    /// Sorts by start frame and returns the first start of all items; 1e23 for an empty track.
    float getFirstFrame();

    /// Sorts by start frame and returns the greater end of the last block and the last sub-clip;
    /// -1e23 without both. On purpose these are the ones that start last, not necessarily those
    /// that end last, and sequence items do not count.
    float getLastFrame();

    /// getLastFrame minus getFirstFrame; -2e23 for an empty track.
    float getDuration();

    /// Mirrors the track in time between getFirstFrame and getLastFrame: blocks are flipped and
    /// moved, sequence items moved, sub-clips mirrored in place (each of their tracks within its
    /// own range). Then stores \p fliped. Mirrors on every call, whatever the flag was: calling it
    /// twice with true restores the layout and leaves the flag true.
    ///
    /// As sequence items do not count for getLastFrame, one that lies behind it goes to before the
    /// first frame, and on a track without blocks and sub-clips, whose last frame is -1e23, all of
    /// them go there for good: single precision keeps nothing of the frames they had.
    ///
    /// @code
    ///   frame             0    5    10   15   20   25   30
    ///   before            [=== A ==>]    .    .    [ B =>]
    ///   setFliped(true)   [<= B ]   .    .    [<== A ===]
    /// @endcode
    void setFliped(bool fliped);

    /// Sets the motion blur flag of every block, of every sub-clip (and so of all that it holds)
    /// and of the track. Sequence items are left alone.
    void setMotionBlur(bool motionBlur);

    /// Sets the active flag of every block, of every sub-clip (its own flag, nothing below it), of
    /// every sequence item and of the track.
    void setActive(bool active);

  private:
    friend class kv::detail::ClipRanges;
    friend class kv::detail::RangeWalk;
    friend class kvAnimationAttachmentInteraction;
    friend struct kvTestAccess<kvAnimationTrack>;

    using BlockIterator = std::vector<kvAnimationBlock*>::const_iterator;
    using ClipIterator = std::vector<kvAnimationClip*>::const_iterator;
    using SequenceIterator = std::vector<kvAnimationSequence2*>::const_iterator;

    void duplicateBlocks(const kvAnimationTrack& other);
    void duplicateSubclips(const kvAnimationTrack& other);
    void duplicateSequences(const kvAnimationTrack& other);

    BlockIterator findBlock(unsigned long id) const;
    BlockIterator findBlock(const std::string& name) const;
    BlockIterator findBlock(kvAnimationCurve* curve) const;
    ClipIterator findClip(unsigned long id) const;
    SequenceIterator findSequence(unsigned long id) const;

    bool _active = true;
    bool _fliped = false;
    bool _motionBlur = false;
    int _number = -1;
    float _firstFrame = 0.0F;
    float _lastFrame = 0.0F;
    std::vector<kvAnimationBlock*> _blocks;
    std::vector<kvAnimationClip*> _clips;
    std::vector<kvAnimationSequence2*> _sequences;
};
