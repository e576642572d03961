#pragma once

/// @file
/// The ordered list of keys that every curve is.

#include <kvControlPoint.h>
#include <kvOpenSGAnimationsApi.h>

#include <atomic>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace kv::detail {
class KeyIdIndex;
class KeyImport;
struct CurveBinding;
struct KeyListReader;

/// What a list remembers of the segment that was evaluated last, read and written by SegmentMemory;
/// several threads may do so at once. A copy starts without.
struct SegmentWords {
    std::atomic<std::uint64_t> words[10] = {};
};
} // namespace kv::detail

/// A list of keys in ascending order of their frames, with the editing state of the curve editor.
///
/// **Order.** Inserting, deleting and sortCPs() leave the keys sorted and each key linked to its
/// neighbours. Keys of equal frames keep the order they had; keys whose frame is NaN come after all
/// others. Inserting replaces a key at exactly the same frame.
///
/// **Cost.** Inserting behind the last key takes constant time on average, anywhere else the time
/// to move the keys behind it. The list sorts only when it cannot know that it is sorted: after
/// somebody moved a key with kvControlPoint::setPoint, assigned to one, changed an id, or asked for
/// the keys through the non-const getCPs().
///
/// **Pointers.** Insertion and deletion invalidate every pointer to a key of this list: getHitCP(),
/// the results of look-ups, the links. The list itself never follows a link that does not point at
/// one of its own keys; such a link counts as "no neighbour".
///
/// Nothing here reports errors. An empty list answers with the neutral results told below, and a
/// key that is not found changes nothing. A list is used by one thread at a time, but several may
/// evaluate it while nobody changes it.
class KV_ANIMATIONS_API kvControlPointManager {
  public:
    /// What the last successful hit test found.
    enum HitType : int {
        HitPoint = 0,     ///< the key itself
        HitInTangent = 1, ///< the key's incoming handle
        HitOutTangent = 2 ///< the key's outgoing handle
    };

    /// How long recomputed handles are. Any other number puts both handles on the key.
    enum TangentLengthMode : int {
        Fixed = 1, ///< 2 units along the handle's direction
        Half = 2,  ///< half of the frames to the neighbour
        Third = 3  ///< a third of the frames to the neighbour, the third taken in single precision
    };

    /// An empty list whose handles are Half long.
    kvControlPointManager();

    /// @{
    /// Copies keys (ids and raw links as they are), counter, handle length and editing state. The
    /// copy's links and its hit key still point into the source; call computeLinkedList() or
    /// sortCPs() before editing the copy.
    kvControlPointManager(const kvControlPointManager& other);
    kvControlPointManager& operator=(const kvControlPointManager& other);
    ~kvControlPointManager();
    /// @}

    /// @name Keys
    /// @{

    /// All keys, in list order.
    const std::vector<kvControlPoint>& getCPs() const { return cps; }

    /// All keys, for changing them. Call sortCPs() after changing frames, adding or removing keys,
    /// and ask for the keys again after any other operation on the list: the list takes this very
    /// call as the sign that its order may change. For reading, use the const form: a list whose
    /// vector was handed out once is read anew on every tick.
    std::vector<kvControlPoint>& getCPs();

    /// Same as insertCP(x, y, false, false).
    void insertCP(double x, double y);

    /// Inserts a key of type Auto at frame `x` with value `y`, drawing one id, and recomputes the
    /// handles of the new key and of its two neighbours. A key at exactly the frame `x` (before
    /// snapping) is replaced.
    /// `snapX` rounds the frame to a whole number, halves away from zero; `snapY` the value.
    void insertCP(double x, double y, bool snapX, bool snapY);

    /// Erases the first key whose frame equals `x` exactly; false when there is none. Links and
    /// handles of the other keys stay as they are, so call computeLinkedList() before using them.
    bool deleteExistingKey(double x);

    /// Erases the first key with the id of `cp`, then recomputes the handles of the keys that `cp`
    /// linked to, the next one first. Null and unknown keys are ignored.
    void deleteCP(kvControlPoint* cp);

    /// Erases every selected key and recomputes the handles of all that remain, also when nothing
    /// was selected.
    void deleteAllSelectedCPs();

    /// Sorts by frame and links neighbours.
    void sortCPs();

    /// Links every key to the keys before and after it, without sorting.
    void computeLinkedList();

    /// @}
    /// @name Look-up and selection
    /// @{

    /// The first key with this id, which also becomes the current key; null when there is none.
    kvControlPoint* findCP(int id);

    /// Whether `cp` has the id of the first key; false for an empty list.
    bool isStartCP(const kvControlPoint& cp) const;

    /// Whether `cp` has the id of the last key; false for an empty list.
    bool isEndCP(const kvControlPoint& cp) const;

    /// The key's flag, but false whenever this list is empty.
    bool isSelected(const kvControlPoint& cp) const;

    void selectCP(kvControlPoint& cp);   ///< sets the flag of `cp` itself
    void deselectCP(kvControlPoint& cp); ///< clears the flag of `cp` itself
    void selectAllCPs();                 ///< sets the flags of all keys
    void deselectAllCPs();               ///< clears the flags of all keys

    /// The selected keys in list order, valid until the list changes.
    std::vector<kvControlPoint*> getSelectedCPs();

    /// The key last hit by hasHitCPOrTangent(), null before the first hit; dangling once the list
    /// has changed.
    kvControlPoint* getHitCP() const { return hitCP; }

    /// What was last hit; HitPoint before the first hit.
    HitType getHitType() const { return hitType; }

    /// @}
    /// @name Ranges
    /// @{

    /// The first key's frame, or 99999 for an empty list: larger than getEndFrame() there, so that
    /// an empty curve widens no range built from minima of starts and maxima of ends.
    double getStartFrame() const;

    /// The last key's frame, or -99999 for an empty list.
    double getEndFrame() const;

    /// Widens a range of frames (x) and values (y) by all keys; handles do not count. The caller
    /// seeds the four numbers, so that several curves widen one range. An empty list sets all four
    /// to 0.
    void getMaxMinValues(double& maxX, double& maxY, double& minX, double& minY) const;

    /// The keys around `frame` as the evaluation wants them: the last key at or before it and the
    /// first key after it, null where there is none. Empty for fewer than two keys.
    std::vector<kvControlPoint*> getBezierIntervalCPs(float frame);

    /// The keys around frame `x`, leaving out a key at exactly `x`; null where there is none. Empty
    /// for fewer than two keys.
    std::vector<kvControlPoint*> getPrevAndNextCP(double x);

    /// @}
    /// @name Handles
    /// @{

    /// Chooses how long recomputed handles are; recomputes nothing.
    /// @param mode a TangentLengthMode; other numbers collapse the handles of types 2 to 5
    void setTangentLength(int mode) { tangentLength = mode; }

    /// Places both handles of `cp` by its type and the handle length. Nothing changes for type
    /// User, in a list of fewer than two keys, or when a neighbour that is needed is missing.
    void computeTangents(kvControlPoint& cp);

    /// Recomputes every key, first to last; nothing for fewer than two keys.
    void computeTangents();

    /// Gives every selected key this type and recomputes it.
    void computeTangents(int type);

    /// Recomputes the key before `cp`, then `cp`, then the key after it.
    void computeTangentsExtended(kvControlPoint& cp);

    /// Turns every interval between two selected neighbours into a held one: the inner handles
    /// collapse onto their keys and both keys become Constant. Outer handles stay.
    void constantCurveInterval();

    /// @}
    /// @name Mouse editing
    /// @{

    /// Moves `cp` to (x, y), each coordinate rounded to a whole number (halves away from zero) if
    /// its flag is set. Does not sort; does nothing in an empty list.
    void snap2Integer(kvControlPoint& cp, double x, double y, bool snapX, bool snapY);

    /// Whether `cp` may move to frame `x` with its handles at the frames `inX` and `outX`: the
    /// incoming handle not behind the key, neither neighbour's handle passed, neither handle beyond
    /// a neighbour. The outgoing handle is not compared with `x`; that is deliberate.
    bool checkConstraints(const kvControlPoint& cp, float x, float inX, float outX) const;

    /// Stores in every key its signed distance from the mouse at (mx, my), in curve units.
    void computeDistances2Mouse(double mx, double my);

    /// Looks for a key within 6 pixels of the mouse or a handle within 4, and remembers the first
    /// one found. Keys are tried in order, each before its incoming and its outgoing handle.
    /// Without a hit the remembered key and type stay.
    /// @param mx, my mouse position in curve units
    /// @param scaleX, scaleY pixels per curve unit
    bool hasHitCPOrTangent(double mx, double my, double scaleX, double scaleY);

    /// @}

  protected:
    /// Inserts a copy of `cp` with all its fields and the list's counter as its id, which is also
    /// written to `cp`. Draws no id and does not snap; otherwise as the public form.
    void insertCP(kvControlPoint& cp);

    /// The first key with the id of `cp`, or the end.
    std::vector<kvControlPoint>::iterator findCP(const kvControlPoint& cp);

  private:
    friend class kvAnimationCurve;
    friend class kv::detail::KeyImport;
    friend struct kv::detail::CurveBinding;
    friend struct kv::detail::KeyListReader;
    friend struct kvTestAccess<kvControlPointManager>;

    // What the list knows about its own order, so that it need not look again. The note on sorting
    // holds while no key has been edited from outside since and the vector is the one it was
    // written for; the links are right only if the list set them itself. Edits of keys without
    // links are not noticed, so a note is only written for keys that are or were linked.
    struct OrderNote {
        std::uint64_t edit = 0;
        const kvControlPoint* first = nullptr;
        std::uint32_t count = 0; // longer lists count as unsorted
        bool linked = false;
        bool endsInNumber = false; // the last frame is none of the NaNs, which stand at the end
    };

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    static int d2i(double v);

    bool isKnownSorted() const;
    bool isKnownLinked() const;
    bool isSorted() const;
    void noteCopied(const kvControlPointManager& source);
    void noteSorted();
    void noteUnsorted();
    void noteIfSorted(bool linked);
    void noteRewritten(bool sorted, bool linked);
    void renewNote();
    void noteLastFrame();
    void bringInOrder();
    void sortByFrame();
    void linkRange(std::size_t first, std::size_t last);
    void linkAll();
    std::size_t sortedIndexOf(std::size_t index) const;

    std::size_t firstAtFrame(double x) const;
    std::size_t firstAfterFrame(double x) const;
    std::size_t searchAfterFrame(double x) const;
    std::size_t searchAfterFrame(double x, std::size_t guess) const;
    std::size_t firstWithId(int id);
    std::size_t indexOf(const kvControlPoint* cp) const;
    std::size_t linkedIndex(const kvControlPoint* link) const;
    kvControlPoint* live(const kvControlPoint* link);
    const kvControlPoint* live(const kvControlPoint* link) const;

    void reserveOneMore();
    void insertKey(double replacedFrame, const kvControlPoint& key);
    void countInsertion();
    void eraseAt(std::size_t index);
    void placeKey(std::size_t hole, std::size_t target, const kvControlPoint& key);
    void dropIdIndex();
    void moveKey(std::size_t index, kvControlPoint::Point point);
    void setPointInPlace(kvControlPoint& cp, kvControlPoint::Point target);
    void countIfPlayed();

    // A tick goes through the curves of a scene, which do not fit into the caches: what it reads of
    // a list comes first, no more than 64 bytes.
    std::vector<kvControlPoint> cps;
    OrderNote order;
    // Where the segment that was evaluated last ends: a hint, right or wrong. Atomic because
    // several threads may evaluate one list.
    mutable std::atomic<std::uint32_t> segmentEnd{0};
    // A player may have taken down a segment, see kv::detail::PlayedSegments. Atomic because
    // several may do so at once.
    mutable std::atomic<bool> isPlayed{false};
    bool wasHandedOut = false; // the vector itself, for changing
    // Of what a curve drives, see kv::detail::CurveBinding. The curve's, not copied with the keys.
    std::uint64_t bindingStamp = 0;
    mutable kv::detail::SegmentWords segmentWords;

    int greatestId = INT_MIN; // in a list known as sorted, no key has a greater one

    HitType hitType = HitPoint;
    kvControlPoint* currentCP = nullptr;
    kvControlPoint* hitCP = nullptr;
    int cpCount = 1;
    int tangentLength = Half;
    // The keys were copied and not linked since: their links lead into another list. Those must not
    // be told by address alone, since this list may come to lie where that one was.
    bool foreignLinks = false;
    unsigned idScans = 0;
    std::unique_ptr<kv::detail::KeyIdIndex> idIndex;
};
