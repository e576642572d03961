#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kv::detail {
class ClipRanges;
class RangeWalk;
} // namespace kv::detail

/// @file
/// The clip: a timeline of tracks.

/// A named list of tracks, each with blocks, sub-clips and sequence items: what the clip editor
/// shows and what is played as a whole. Sub-clips make clips a tree.
///
/// A clip does not store its range; getStartFrame and getEndFrame compute it from the tracks, and
/// sort the items of the tracks by start frame on the way.
///
/// Ownership. A clip owns its tracks and through them everything on them. Removed items are not
/// deleted and belong to the caller. A copy is deep and has fresh ids throughout; an assignment
/// shares the tracks of its source, so that one of the two must not be destroyed with them. Nothing
/// checks whether an item is added twice.
///
/// Tracks have a number and a position. The number is given at creation (the count of tracks at
/// that time) and never changes, so after deleteTrack numbers have gaps and may repeat. deleteTrack
/// takes a number; getTrack, sortTrack and the insert operations take a position, from 0.
///
/// Ids are compared as 32-bit values, first match first, tracks in order. \p recursive makes
/// look-ups and removals go down into sub-clips to any depth.
///
/// A clip can never be put below itself: what would do that changes nothing. Not safe for
/// concurrent use.
class KV_ANIMATIONS_API kvAnimationClip {
  public:
    /// A clip named "Clip" with a fresh id and without tracks: active, all other flags off.
    kvAnimationClip();

    /// The same with a name.
    explicit kvAnimationClip(std::string name);

    /// A deep copy with the flags and the name. The clip's fresh id is drawn first, then those of
    /// the items. The last inserted items of the copy are null.
    kvAnimationClip(const kvAnimationClip& other);

    /// Plain assignment of every member, the id included: afterwards both clips share the same
    /// tracks. The tracks held until now are not deleted. Changes nothing when it would put a clip
    /// below itself.
    kvAnimationClip& operator=(const kvAnimationClip& other);

    /// Deletes the tracks and everything on them.
    ~kvAnimationClip();

    /// @{
    /// The id by which the clip is found. Not necessarily unique. 32 bits are kept.
    void setId(unsigned long id);
    unsigned int getId() const { return _id; }
    /// @}

    /// @{
    /// The name shown in the clip editor.
    void setName(std::string name);
    std::string getName() const { return _name; }
    /// @}

    /// @{
    /// Whether the clip takes part in playback; its own flag only.
    void setActive(bool active) { _active = active; }
    bool getActive() const { return _active; }
    /// @}

    /// @{
    /// Whether playback of the clip starts over at its end.
    void setRepeat(bool repeat) { _repeat = repeat; }
    bool getRepeat() const { return _repeat; }
    /// @}

    /// @{
    /// What setFliped and setMotionBlur were told last.
    bool getFliped() const { return _fliped; }
    bool getMotionBlur() const { return _motionBlur; }
    /// @}

    /// Number of tracks.
    int getTrackAmount() const { return static_cast<int>(_tracks.size()); }

    /// The tracks in order of creation.
    const std::vector<kvAnimationTrack*>& getTracks() const { return _tracks; }

    /// @{
    /// The item that was added or inserted last through this clip; null before the first one. Not
    /// cleared when the item is removed or deleted.
    kvAnimationBlock* getLastInsertedBlock() const { return _lastInsertedBlock; }
    kvAnimationClip* getLastInsertedSubclip() const { return _lastInsertedSubclip; }
    kvAnimationSequence2* getLastInsertedSequence() const { return _lastInsertedSequence; }
    /// @}

    /// @name Tracks
    /// @{

    /// Appends a track whose number is the count of tracks so far, and returns that number.
    int createTrack();

    /// Deletes the first track with this number and everything on it. The others keep their
    /// numbers. Nothing happens when there is none.
    ///
    /// @code
    ///   before            tracks numbered 0 1 2
    ///   deleteTrack(1)    tracks numbered 0 2
    ///   createTrack()     tracks numbered 0 2 2
    /// @endcode
    void deleteTrack(int number);

    /// Deletes empty tracks from the end up to the last track that holds something. Empty tracks
    /// between others stay.
    ///
    /// @code
    ///   before               [A] [ ] [B] [ ] [ ]
    ///   deleteEmptyTracks()  [A] [ ] [B]
    /// @endcode
    void deleteEmptyTracks();

    /// The track at this position, null outside.
    kvAnimationTrack* getTrack(int index) const;

    /// kvAnimationTrack::updateBounds of the track at this position; nothing happens outside.
    void sortTrack(int index);

    /// kvAnimationTrack::updateBounds of every track. Two names for one operation.
    void sortTracks();
    void updateBounds();
    /// @}

    /// @name Adding
    /// add always makes a new track for the item. insert puts it on the track at position \p index,
    /// or on a new one when there is no such position. False for null and for a clip that this clip
    /// is or is below: nothing changes then, and no track is made. The clip owns the item from now
    /// on.
    ///
    /// @code
    ///   before, track 0   [ A ]
    ///   addBlock(B)
    ///           track 0   [ A ]
    ///           track 1   [ B ]
    ///   insertBlock(C, 0)
    ///           track 0   [ A ][ C ]
    ///           track 1   [ B ]
    /// @endcode
    /// @{
    bool addBlock(kvAnimationBlock* block);
    bool insertBlock(kvAnimationBlock* block, int index);
    bool addSubclip(kvAnimationClip* clip);
    bool insertSubclip(kvAnimationClip* clip, int index);
    bool addSequence(kvAnimationSequence2* sequence);
    bool insertSequence(kvAnimationSequence2* sequence, int index);

    /// Makes a new clip, adds it and returns it.
    kvAnimationClip* newSubclip();
    /// @}

    /// @name Removing
    /// Found by id and taken off its track; the track stays, even when it is empty now. The item is
    /// not deleted. False when not found, and for null.
    ///
    /// @code
    ///   before, track 0   [ A ][ C ]
    ///           track 1   [ B ]
    ///   subBlock(A)
    ///           track 0        [ C ]
    ///           track 1   [ B ]
    /// @endcode
    /// @{
    bool subBlock(kvAnimationBlock* block, bool recursive);
    bool subBlock(unsigned long id, bool recursive);
    bool subSubclip(kvAnimationClip* clip, bool recursive);
    bool subSubclip(unsigned long id, bool recursive);
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
    kvAnimationClip* getSubclip(unsigned long id, bool recursive) const;
    kvAnimationSequence2* getSequence(unsigned long id, bool recursive) const;
    /// @}

    /// @name Collecting
    /// The items of all tracks in a new list, in order of start frame or, when \p byEnd, of end
    /// frame. \p withSubclips adds the items of the sub-clips on the tracks, but not of the
    /// sub-clips inside those: the descent is one level deep on purpose.
    /// @{
    std::vector<kvAnimationBlock*> getBlocks(bool byEnd, bool withSubclips);
    std::vector<kvAnimationClip*> getSubclips(bool byEnd, bool withSubclips);
    std::vector<kvAnimationSequence2*> getSequences(bool byEnd, bool withSubclips);
    /// @}

    /// The least kvAnimationTrack::getFirstFrame of the tracks; 1e23 without tracks.
    float getStartFrame();

    /// The greatest kvAnimationTrack::getLastFrame of the tracks, by its rule (sequence items do
    /// not count); -1e23 without tracks.
    float getEndFrame();

    /// getEndFrame minus getStartFrame, in frames.
    float getDuration();

    /// Whether getStartFrame <= \p frame <= getEndFrame. False for NaN.
    bool frameInClipRange(float frame);

    /// Moves everything on all tracks, at every depth, by \p delta frames.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before, track 0   [=== A ===]    .    .
    ///           track 1   .    [=== B ===]    .
    ///   move(5), track 0  .    [=== A ===]    .
    ///           track 1   .    .    [=== B ===]
    /// @endcode
    void move(float delta);

    /// Scales the clip in time so that it starts at \p newStart and ends where it did: the start
    /// and end of every item are mapped from the old range to the new one, and the item is
    /// stretched to them, first at the edge that moves outward.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before, track 0   .    .    [ A ]     .
    ///           track 1   .    .    .    [ B ]
    ///   stretchLeft(0)
    ///           track 0   [=== A ===]    .    .
    ///           track 1   .    .    [=== B ===]
    /// @endcode
    void stretchLeft(float newStart);

    /// Scales the clip in time so that it ends at \p newEnd and starts where it did.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before, track 0   [ A ]     .    .    .
    ///           track 1   .    [ B ]     .    .
    ///   stretchRight(20)
    ///           track 0   [=== A ===]    .    .
    ///           track 1   .    .    [=== B ===]
    /// @endcode
    void stretchRight(float newEnd);

    /// Mirrors every track within its own range (kvAnimationTrack::setFliped, which also tells what
    /// becomes of tracks that hold only sequence items), on every call, and stores \p fliped.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before, track 0   [ A =>]   [=== B ==>]
    ///           track 1   .    [ C =>]   .    .
    ///   setFliped(true)
    ///           track 0   [<== B ===]    [<= A ]
    ///           track 1   .    [<= C ]   .    .
    /// @endcode
    void setFliped(bool fliped);

    /// Sets the motion blur flag of every block at every depth, of the sub-clips, the tracks and
    /// the clip.
    void setMotionBlur(bool motionBlur);

    /// Marks the sequence items on the clip's own tracks as to be run again.
    void setAllSequencesDirty();

    /// Writes name, counts and tracks to standard output.
    void printClipInfo();

  private:
    friend class kv::detail::ClipRanges;
    friend class kv::detail::RangeWalk;
    friend class kvAnimationAttachmentInteraction;
    friend struct kvTestAccess<kvAnimationClip>;

    void duplicateTracks(const kvAnimationClip& other);
    kvAnimationTrack& newTrack();

    std::uint32_t _id;
    bool _active = true;
    bool _fliped = false;
    bool _repeat = false;
    bool _motionBlur = false;
    std::string _name = "Clip";
    kvAnimationBlock* _lastInsertedBlock = nullptr;
    kvAnimationClip* _lastInsertedSubclip = nullptr;
    kvAnimationSequence2* _lastInsertedSequence = nullptr;
    std::vector<kvAnimationTrack*> _tracks;
};
