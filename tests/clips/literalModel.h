#pragma once

#include <kvAnimationClip.h>

#include <memory>
#include <string>
#include <vector>

/// A second making of blocks, sequence items, tracks and clips: the plainest one possible, with
/// values in lists and every getter asked again whenever it is needed. It shares no code with the
/// library. The tests make the same random edits to both and compare everything that can be read.
namespace kvtest::model {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

struct Key {
    Point point;
    Point in;
    Point out;
};

struct Curve {
    std::vector<Key> keys;

    double start() const { return keys.empty() ? 99999.0 : keys.front().point.x; }
    double end() const { return keys.empty() ? -99999.0 : keys.back().point.x; }
    void stretchLeft(float newStart);
    void stretchRight(float newEnd);
    void flip();
};

/// A block, or a sequence item when it is one.
struct Item {
    std::string name;
    bool isSequence = false;
    bool fliped = false;
    bool active = true;
    bool motionBlur = false;
    float start = 99999.0F;
    float end = -99999.0F;
    std::vector<Curve> curves;

    void addCurve(const Curve& curve);
    void updateBounds();
    void move(float delta);
    void stretchLeft(float frame);
    void stretchRight(float frame);
    void flip();
};

struct Clip;

struct Track {
    int number = -1;
    bool active = true;
    bool fliped = false;
    bool motionBlur = false;
    float cachedFirst = 0.0F;
    float cachedLast = 0.0F;
    std::vector<std::shared_ptr<Item>> blocks;
    std::vector<std::shared_ptr<Clip>> clips;
    std::vector<std::shared_ptr<Item>> sequences;

    void sort(bool byEnd);
    void updateBounds();
    float firstFrame();
    float lastFrame();
    void setFliped(bool value);
    void setMotionBlur(bool value);
    void setActive(bool value);
    bool removeBlock(const std::string& name, bool recursive);
    bool removeSequence(const std::string& name, bool recursive);
    bool removeClip(const std::string& name, bool recursive);
};

struct Clip {
    std::string name;
    bool active = true;
    bool fliped = false;
    bool motionBlur = false;
    std::vector<Track> tracks;

    Track& trackForInsertion(int index);
    void sortTracks();
    float startFrame();
    float endFrame();
    void move(float delta);
    void stretchLeft(float newStart);
    void stretchRight(float newEnd);
    void setFliped(bool value);
    void setMotionBlur(bool value);
    void deleteTrack(int number);
    void deleteEmptyTracks();
    bool removeBlock(const std::string& name, bool recursive);
    bool removeSequence(const std::string& name, bool recursive);
    bool removeClip(const std::string& name, bool recursive);
    std::vector<std::string> blockNames(bool byEnd, bool withSubclips);

  private:
    std::vector<std::shared_ptr<Item>> collectBlocks(bool byEnd, bool withSubclips);
};

/// The whole state as text, one line a track, item and key; numbers to the last bit. The model and
/// the library write the same text when they agree.
std::string describe(const Clip& clip, const std::string& indent = "");
std::string describe(const kvAnimationClip& clip, const std::string& indent = "");

} // namespace kvtest::model
