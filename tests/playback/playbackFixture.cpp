// The scene, the clock and the clean transport that the tests of playback start from.

#include "playback/playbackFixture.h"

#include "playback/playedValues.h"
#include "support/access/kvAnimationController2.h"

namespace kv::test {

namespace {

double theTime = 0.0;
double readTime() {
    return theTime;
}

void recordSequence(std::string text) {
    PlaybackFixture::executed().push_back(std::move(text));
}

void resetTransport() {
    using State = kvTestAccess<kvAnimationController2>;
    State::am() = &kvAnimationManager2::_the;
    State::blocking() = false;
    State::minFrame() = State::maxFrame() = 0.0F;
    State::startFrame() = State::endFrame() = 0.0F;
    State::actualFrame() = 0.0F;
    State::values().replace();
    State::playingBlock() = nullptr;
    State::playingClip() = nullptr;
    State::playingSequence() = nullptr;
    State::node() = osg::NullFC;
    State::playing() = State::pausing() = State::repeating() = false;
    State::ffw() = State::fbw() = State::reverse() = false;
    State::connectedGlobalSlider() = false;
    State::ignoreActivity() = false;
    State::oldFrame() = 0.0F;
    State::duration() = 0.0F;
    State::fps() = 25.0F;
    State::simTime() = State::startTime() = State::timeDiff() = 0.0;
    State::pt() = kvAnimationController2::PT_GLOBAL;
}

} // namespace

PlaybackFixture::PlaybackFixture() {
    theTime = 0.0;
    executed().clear();
    kvAnimationManager2::setSimulationTimeCB(&readTime);
    kvAnimationManager2::setExecuteSequenceCB(&recordSequence);
    kvAnimationManager2::setActualFrame(0.0F);
    kvAnimationManager2::_the.clear(true);
    resetTransport();
    node = makeMover();
}

PlaybackFixture::~PlaybackFixture() {
    kvAnimationManager2::setSimulationTimeCB(nullptr);
    kvAnimationManager2::setExecuteSequenceCB(nullptr);
    kvAnimationManager2::setActualFrame(0.0F);
    kvAnimationManager2::_the.clear(true);
    resetTransport();
    kvAnimationController2::setAnimationManager(nullptr);
    _clips.clear();
    _blocks.clear();
    for (osg::FieldContainerPtr& container : _held)
        osg::subRefCP(container);
}

void PlaybackFixture::setTime(double seconds) {
    theTime = seconds;
}

void PlaybackFixture::tickAt(double seconds) {
    setTime(seconds);
    kvAnimationController2::animationLoop();
}

void PlaybackFixture::hold(const osg::FieldContainerPtr& container) {
    osg::addRefCP(container);
    _held.push_back(container);
}

osg::NodePtr PlaybackFixture::makeMover() {
    const osg::NodePtr mover = osg::Node::create();
    hold(mover);
    mover->setCore(osg::ComponentTransform::create());
    return mover;
}

kvAnimationCurve* PlaybackFixture::makeLine(const osg::NodePtr& mover, float first,
                                            float firstValue, float last, float lastValue,
                                            unsigned component) {
    // Handles on the chord at half the segment: the value is linear in the frame.
    const float midFrame = (first + last) / 2.0F;
    const float midValue = (firstValue + lastValue) / 2.0F;
    static const char* const kAttributes[] = {"translateX", "translateY", "translateZ"};
    static const char* const kFields[] = {"translationX", "translationY", "translationZ"};
    auto* const curve = new kvAnimationCurve(kAttributes[component]);
    curve->setAppropriateNode(mover);
    curve->importControlPoint(first, firstValue, first, firstValue, midFrame, midValue, 6);
    curve->importControlPoint(last, lastValue, midFrame, midValue, last, lastValue, 6);
    kvAnimationUtils2::AnimationField field;
    field.node = mover;
    field.fcId = osg::getContainerId(mover->getCore());
    field.fieldName = kFields[component];
    field.globalFieldName = "translation";
    field.valuePosition = static_cast<std::uint16_t>(component);
    curve->setAnimationField(field);
    return curve;
}

kvAnimationCurve* PlaybackFixture::makeRamp(const osg::NodePtr& mover, float first, float last,
                                            unsigned component) {
    return makeLine(mover, first, first, last, last, component);
}

kvAnimationBlock* PlaybackFixture::makeBlock(const osg::NodePtr& mover, float first, float last) {
    _blocks.push_back(std::make_unique<kvAnimationBlock>(mover, "block"));
    _blocks.back()->addCurve(makeRamp(mover, first, last));
    return _blocks.back().get();
}

kvAnimationClip* PlaybackFixture::makeClip() {
    _clips.push_back(std::make_unique<kvAnimationClip>());
    return _clips.back().get();
}

kvAnimationSequence2* PlaybackFixture::makeSequence(const std::string& text, float first,
                                                    float last) {
    auto* const sequence = new kvAnimationSequence2(text);
    sequence->setStartFrame(first);
    sequence->setEndFrame(last);
    return sequence;
}

float PlaybackFixture::shown(const osg::NodePtr& mover, unsigned component) {
    return osg::ComponentTransformPtr::dcast(mover->getCore())->getTranslation()[component];
}

std::vector<std::string>& PlaybackFixture::executed() {
    static std::vector<std::string> texts;
    return texts;
}

} // namespace kv::test
