#pragma once

#include "playback/playbackFixture.h"
#include "support/recordingListener.h"

#include <memory>
#include <string>
#include <vector>

namespace kv::test {

/// What a row of the boundary table plays.
enum class Played { block, clip, sequence, local, global, globalAndSelected };

/// What was seen between `record` and `seen`.
struct Seen {
    std::vector<std::string> evaluated; ///< the frames written into the scene, without repetitions
    std::vector<std::string> events;    ///< writes, runs of sequences, notifications; in order
    std::string managerFrame;           ///< empty when it was not set
    std::string controllerFrame;        ///< empty when it was not set
    std::vector<std::string> flags;     ///< those that are true at the end

    bool operator==(const Seen& other) const;
};

/// A transport in its start state with one thing to play, every write of which is seen.
///
/// All ranges are 10 to 40, but for the block of global playback, 12 to 38, so that its own ends
/// can be told from those of the range. Curves reach from frame 0 to frame 100, past the range that
/// their block knows, and are worth their frame: the value written is the frame evaluated, where a
/// curve that ends with its block would only show its last value. They move a camera setting that
/// is not a viewpoint, since that hands itself to the host at every single write.
///
/// One at a time: transport, clock and log are process-wide.
class BoundaryStage : public PlaybackFixture {
  public:
    explicit BoundaryStage(Played what);
    ~BoundaryStage() override;
    BoundaryStage(const BoundaryStage&) = delete;
    BoundaryStage& operator=(const BoundaryStage&) = delete;

    /// Starts playback at the end of the range that it leaves behind.
    void play(bool reverse);
    /// Sets the repeat flag of what has one, and calls the transport's `repeat`.
    void repeat();
    /// The tick at which playback at the rate of `play` has reached `frame`.
    void tickAtFrame(float frame);

    /// Forgets what happened so far, the frames of manager and controller included.
    void record();
    Seen seen();

    kvAnimationBlock* block() { return _block.get(); }
    kvAnimationClip* clip() { return _clip; }

  private:
    void TestBody() override {}
    osg::NodePtr makeCamera();
    void makeBlockOver(float first, float last);
    void makeClipWithSequences();
    void selectCurve();

    Played _what;
    osg::NodePtr _camera;
    std::unique_ptr<kvAnimationBlock> _block;
    kvAnimationClip* _clip = nullptr;
    std::unique_ptr<kvAnimationSequence2> _sequence;
    std::unique_ptr<kvAnimationCurve> _selected;
    float _startFrame = 0.0F;
    bool _reverse = false;

    NotificationLog _log;
    RecordingListener _listener{_log};
};

} // namespace kv::test
