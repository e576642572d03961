#pragma once

#include <kvAnimationBlock.h>

#include <cstdint>
#include <string>

/// @file
/// The sequence item: an entry of a track that starts a script of the host.

/// An item on a track that animates nothing but makes the host run a named script (the sequence)
/// while a clip plays through its range of frames.
///
/// It is a block of which only the range, the name, the flags and the id are used; its curve list
/// stays empty, and its range is set directly. The manager runs it once a whole frame and keeps the
/// books for that here: the frame of the last run and the dirty flag.
class KV_ANIMATIONS_API kvAnimationSequence2 : public kvAnimationBlock {
  public:
    /// Without text and name, covering nothing, dirty and never run.
    kvAnimationSequence2();

    /// The same with \p text as sequence and as name.
    explicit kvAnimationSequence2(const std::string& text);

    /// Copies only the sequence, the zeros fill amount, the last frame and the dirty flag. Range,
    /// name, flags and id are those of a new item, on purpose: set them after the copy.
    kvAnimationSequence2(const kvAnimationSequence2& other);

    /// Plain assignment of every member, range, name and id included.
    kvAnimationSequence2& operator=(const kvAnimationSequence2& other);

    ~kvAnimationSequence2();

    /// @{
    /// The text that tells the host what to run.
    void setSequence(const std::string& text) { _sequence = text; }
    const std::string& getSequence() const { return _sequence; }
    /// @}

    /// @{
    /// A setting of the host that is only kept here, in 16 bits: higher bits are dropped.
    void setZerosFillAmount(unsigned int amount);
    unsigned int getZerosFillAmount() const { return _zerosFillAmount; }
    /// @}

    /// @{
    /// The ends of the range, in frames. Nothing keeps the end after the start.
    void setStartFrame(float frame) { _startFrame = frame; }
    void setEndFrame(float frame) { _endFrame = frame; }
    /// @}

    /// @{
    /// The last whole frame at which the sequence ran; -1e23 means never.
    void setOldFrame(float frame) { _oldFrame = frame; }
    float getOldFrame() const { return _oldFrame; }
    /// @}

    /// @{
    /// Whether the sequence is to run again even at the frame at which it ran last.
    void setDirty(bool dirty) { _dirty = dirty; }
    bool getDirty() const { return _dirty; }
    /// @}

    /// Shifts the range by \p delta frames.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before            .    .    <=========>
    ///   moveBlock(-5)     .    <=========>    .
    /// @endcode
    void moveBlock(float delta) override;

    /// Sets the start of the range; the same as setStartFrame.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before            .    .    <=========>
    ///   stretchLeft(5)    .    <==============>
    /// @endcode
    void stretchLeft(float frame) override;

    /// Sets the end of the range; the same as setEndFrame.
    ///
    /// @code
    ///   frame             0    5    10   15   20
    ///   before            .    .    <=========>
    ///   stretchRight(15)  .    .    <====>    .
    /// @endcode
    void stretchRight(float frame) override;

  private:
    friend struct kvTestAccess<kvAnimationSequence2>;

    static kvAnimationSequence2 _the;

    std::string _sequence;
    std::uint16_t _zerosFillAmount = 0;
    float _oldFrame = -1.0e23F;
    bool _dirty = true;
};
