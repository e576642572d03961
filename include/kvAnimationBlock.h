#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGNode.h>

#include <cstdint>
#include <string>
#include <vector>

/// @file
/// The animation block: the curves of one node.

/// A named group of curves that all drive attributes of one node of the scene: what the user places
/// on a track.
///
/// The range of a block (getStartFrame, getEndFrame; frames, both ends inclusive) is a cached
/// value. It is widened by addCurve, shifted by moveBlock, and computed afresh from the keys only
/// by updateBlockBounds, stretchLeft and stretchRight, so after editing keys directly call
/// updateBlockBounds. A block without curves covers nothing: its range starts at 99999 and ends at
/// -99999.
///
/// Ownership. A block owns its curves and deletes them with itself. A copy has curves of its own;
/// an assignment shares the curves of its source, so that one of the two must have its list emptied
/// before both are destroyed. The destructor is not virtual: never delete an object of a derived
/// class through a pointer to a block.
///
/// Null curves may stand in the list; everything skips them. Not safe for concurrent use.
class KV_ANIMATIONS_API kvAnimationBlock {
  public:
    /// An unnamed block without a node, covering nothing: active, all other flags off.
    kvAnimationBlock();

    /// The same with a name.
    explicit kvAnimationBlock(std::string name);

    /// The same for a node; see setAppropriateNode.
    explicit kvAnimationBlock(const osg::NodePtr& node);

    /// The same for a node and with a name.
    kvAnimationBlock(const osg::NodePtr& node, std::string name);

    /// A deep copy: everything but the ids. The block and every curve get fresh ids, the block's
    /// drawn first; null curves are left out.
    kvAnimationBlock(const kvAnimationBlock& other);

    /// Plain assignment of every member, the id included: afterwards both blocks share the same
    /// curves. Unlike a copy on purpose. The curves held until now are not deleted.
    kvAnimationBlock& operator=(const kvAnimationBlock& other);

    /// Deletes the curves.
    ~kvAnimationBlock();

    /// First frame covered.
    float getStartFrame() const { return _startFrame; }

    /// Last frame covered.
    float getEndFrame() const { return _endFrame; }

    /// End minus start, in frames; negative for a block that covers nothing.
    float getDuration() const { return _endFrame - _startFrame; }

    /// The id by which tracks, clips and the manager find the block. Not necessarily unique.
    unsigned int getId() const { return _id; }

    /// Only the low 32 bits of \p id are kept.
    void setId(unsigned long long id);

    /// The name shown in the clip editor.
    std::string getBlockName() const { return _name; }

    /// Sets the node that the curves animate; null for none. The block holds no reference to it.
    void setAppropriateNode(const osg::NodePtr& node);

    /// The node that the curves animate; null when there is none or when it was destroyed.
    osg::NodePtr getAppropriateNode() const;

    /// @{
    /// What kind of thing is animated, a code of the manager: 1 other, 2 spot light, 3 point light,
    /// 4 directional light, 5 camera; 0 before the manager has told.
    unsigned char getAnimatedType() const { return _animatedType; }
    void setAnimatedType(unsigned char type) { _animatedType = type; }
    /// @}

    /// @{
    /// Whether the block animates a camera.
    bool isCameraBlock() const { return _cameraBlock; }
    void setCameraBlock(bool cameraBlock) { _cameraBlock = cameraBlock; }
    /// @}

    /// @{
    /// Whether the block is marked as mirrored in time. The setter only sets the mark, flip also
    /// mirrors the keys.
    bool getFliped() const { return _fliped; }
    void setFliped(bool fliped) { _fliped = fliped; }
    /// @}

    /// @{
    /// Whether the block takes part in evaluation.
    bool getActive() const { return _active; }
    void setActive(bool active) { _active = active; }
    /// @}

    /// @{
    /// Whether playback of the block starts over at its end.
    bool getRepeat() const { return _repeat; }
    void setRepeat(bool repeat) { _repeat = repeat; }
    /// @}

    /// @{
    /// Whether the block contributes motion blur samples.
    bool getMotionBlur() const { return _motionBlur; }
    void setMotionBlur(bool motionBlur) { _motionBlur = motionBlur; }
    /// @}

    /// Appends \p curve, which the block owns from now on, and widens the range by it. Null is
    /// appended as well and widens nothing. Nothing checks whether the curve is already there.
    void addCurve(kvAnimationCurve* curve);

    /// @{
    /// The curves, in order of insertion. May be changed; the range then stays as it is.
    std::vector<kvAnimationCurve*>& getBlockCurves() { return _blockCurves; }
    const std::vector<kvAnimationCurve*>& getBlockCurves() const { return _blockCurves; }
    /// @}

    /// The first curve that animates \p attribute (exact match) if it has keys; null when there is
    /// no such curve, and also when the first one has no keys: later ones are not considered.
    kvAnimationCurve* getBlockCurve(std::string attribute) const;

    /// The last curve of the list; null for an empty list.
    kvAnimationCurve* getLastInsertedCurve() const;

    /// Computes the range from the first and last keys of the curves. Without curves the range
    /// stays as it is; null curves alone give 1e23 to -1e23.
    void updateBlockBounds();

    /// Whether start <= \p frame <= end. False for NaN.
    bool frameInBlockRange(float frame) const { return _startFrame <= frame && frame <= _endFrame; }

    /// Orders by start frame.
    bool operator<(const kvAnimationBlock& other) const { return _startFrame < other._startFrame; }

    /// Moves every key and handle by \p delta frames and shifts the range by as much (the range is
    /// not computed afresh). Nothing happens without curves.
    ///
    /// Works in single precision on purpose: the values and the handles of all keys are rounded to
    /// it as well, even for a \p delta of 0.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before            .    [=========]    .
    ///   moveBlock(5)      .    .    [=========]
    /// @endcode
    virtual void moveBlock(float delta);

    /// Stretches every curve so that it starts at \p frame and ends where it did, then computes the
    /// range. Each curve is stretched over its own range, so all of them start at \p frame
    /// afterwards. Nothing happens without curves.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before, curve 1   .    o----o----o    .
    ///           curve 2   .    .    o----o    .
    ///   stretchLeft(0)    o-------o------o    .     keys 5 10 15 are at 0 7.5 15 now
    ///                     o--------------o    .     keys 10 15 are at 0 15 now
    /// @endcode
    virtual void stretchLeft(float frame);

    /// Stretches every curve so that it ends at \p frame and starts where it did, then computes the
    /// range. Nothing happens without curves.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before, curve 1   .    o----o----o    .
    ///           curve 2   .    o----o    .    .
    ///   stretchRight(20)  .    o-------o------o     keys 5 10 15 are at 5 12.5 20 now
    ///                     .    o--------------o     keys 5 10 are at 5 20 now
    /// @endcode
    virtual void stretchRight(float frame);

    /// Mirrors every curve in time within its own range and toggles the flipped mark. The range
    /// stays. Nothing happens without curves, and the mark stays off.
    ///
    /// @code
    ///   frame             0    5    10   15
    ///   before            A----B---------C
    ///   flip()            C---------B----A
    /// @endcode
    void flip();

    /// Writes the number of curves to standard output.
    void printInfo() const;

  protected:
    // Sequence items set their range directly.
    float _startFrame = 99999.0F;
    float _endFrame = -99999.0F;

  private:
    friend class kvAnimationAttachmentInteraction;
    friend struct kvTestAccess<kvAnimationBlock>;

    void duplicateBlockCurves(const kvAnimationBlock& source);

    static std::uint32_t _idCount;
    static kvAnimationBlock _the;

    std::string _name;
    osg::NodePtr _appropriateNode;
    std::uint32_t _appropriateNodeId = 0;
    std::uint8_t _animatedType = 0;
    bool _cameraBlock = false;
    bool _fliped = false;
    bool _active = true;
    bool _repeat = false;
    bool _motionBlur = false;
    std::uint32_t _id;
    std::vector<kvAnimationCurve*> _blockCurves;
};
