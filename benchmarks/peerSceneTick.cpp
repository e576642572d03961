// The peer for ticks of a whole scene: an update traversal of OpenSceneGraph with its animation
// manager and cubic Bezier channels, ten for the ten numbers of one matrix transform.
//
//   kv_bench_peer_scene_tick stacked N   N channels of 100 keys drive the elements of stacked
//                                        transforms, as files and exporters set them up: the
//                                        traversal, and every matrix read; nanoseconds a channel
//   kv_bench_peer_scene_tick callback N  the same with a callback in the place of the stack that
//                                        makes the matrix from ten numbers at once
#include "support/ticks.h"

#include <osg/MatrixTransform>
#include <osgAnimation/AnimationUpdateCallback>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/Channel>
#include <osgAnimation/StackedRotateAxisElement>
#include <osgAnimation/StackedTransformElement>
#include <osgAnimation/UpdateMatrixTransform>
#include <osgUtil/UpdateVisitor>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kKeys = 100;
constexpr double kFramesPerKey = 10.0;
constexpr double kFramesPerSecond = 60.0;
constexpr std::size_t kNumbers = 10;

/// The same values as here: see support/curves.h.
float keyValue(std::size_t i) {
    return static_cast<float>((i * 7919U) % 101U) * 0.1F;
}

// --- the stack -----------------------------------------------------------------------------------

/// One number of a translation or a scale. The library's own elements for these take vectors.
class AxisElement : public osgAnimation::StackedTransformElement {
  public:
    AxisElement(const osg::Vec3& axis, float factor, bool scales)
        : _axis(axis), _factor(factor), _scales(scales), _target(new osgAnimation::FloatTarget) {}

    osg::Object* cloneType() const override { return new AxisElement(_axis, _factor, _scales); }
    osg::Object* clone(const osg::CopyOp&) const override { return cloneType(); }
    const char* libraryName() const override { return "peer"; }
    const char* className() const override { return "AxisElement"; }

    void applyToMatrix(osg::Matrix& matrix) const override {
        const osg::Vec3 along = _axis * (_factor * _value);
        if (_scales)
            matrix.preMultScale(along + osg::Vec3(1.0F, 1.0F, 1.0F) - _axis);
        else
            matrix.preMultTranslate(along);
    }
    osg::Matrix getAsMatrix() const override {
        osg::Matrix matrix;
        applyToMatrix(matrix);
        return matrix;
    }
    bool isIdentity() const override { return _value == (_scales ? 1.0F : 0.0F); }
    void update(float) override { _value = _target->getValue(); }
    osgAnimation::Target* getOrCreateTarget() override { return _target.get(); }

  private:
    osg::Vec3 _axis;
    float _factor;
    bool _scales;
    float _value = 0.0F;
    osg::ref_ptr<osgAnimation::FloatTarget> _target;
};

/// The channels' targets, in their order; the last is the centre.
std::vector<osgAnimation::FloatTarget*> addStack(osg::MatrixTransform& transform) {
    const osg::Vec3 axes[] = {osg::X_AXIS, osg::Y_AXIS, osg::Z_AXIS};
    auto* const update = new osgAnimation::UpdateMatrixTransform;
    auto& stack = update->getStackedTransforms();
    for (const osg::Vec3& axis : axes)
        stack.push_back(new AxisElement(axis, 1.0F, false));
    for (const osg::Vec3& axis : axes)
        stack.push_back(new osgAnimation::StackedRotateAxisElement(axis, 0.0));
    for (const osg::Vec3& axis : axes)
        stack.push_back(new AxisElement(axis, 1.0F, true));
    stack.push_back(new AxisElement(osg::X_AXIS, -1.0F, false));
    transform.setUpdateCallback(update);
    std::vector<osgAnimation::FloatTarget*> targets;
    for (auto& element : stack)
        targets.push_back(static_cast<osgAnimation::FloatTarget*>(element->getOrCreateTarget()));
    return targets;
}

// --- the callback --------------------------------------------------------------------------------

osg::Quat aboutAxis(float degrees, const osg::Vec3& axis) {
    return osg::Quat(osg::DegreesToRadians(static_cast<double>(degrees)), axis);
}

/// Translation, three angles, scale, and the first number of the centre.
class TransformNumbers : public osgAnimation::AnimationUpdateCallback<osg::NodeCallback> {
  public:
    TransformNumbers() {
        for (auto& number : _numbers)
            number = new osgAnimation::FloatTarget(0.0F);
    }

    osgAnimation::FloatTarget* number(std::size_t i) { return _numbers[i].get(); }

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        const osg::Quat rotation = aboutAxis(value(3), osg::X_AXIS) *
                                   aboutAxis(value(4), osg::Y_AXIS) *
                                   aboutAxis(value(5), osg::Z_AXIS);
        const osg::Vec3 center(value(9), 0.0F, 0.0F);
        osg::Matrix matrix = osg::Matrix::translate(-center);
        matrix.postMultScale(osg::Vec3(value(6), value(7), value(8)));
        matrix.postMultRotate(rotation);
        matrix.postMultTranslate(center + osg::Vec3(value(0), value(1), value(2)));
        static_cast<osg::MatrixTransform*>(node)->setMatrix(matrix);
        traverse(node, visitor);
    }

  private:
    float value(std::size_t i) const { return _numbers[i]->getValue(); }

    std::array<osg::ref_ptr<osgAnimation::FloatTarget>, kNumbers> _numbers;
};

std::vector<osgAnimation::FloatTarget*> addCallback(osg::MatrixTransform& transform) {
    auto* const numbers = new TransformNumbers;
    transform.setUpdateCallback(numbers);
    std::vector<osgAnimation::FloatTarget*> targets;
    for (std::size_t i = 0; i < kNumbers; ++i)
        targets.push_back(numbers->number(i));
    return targets;
}

// --- the scene -----------------------------------------------------------------------------------

/// The channels are given their targets when they are made: looking them up by name takes a time
/// that grows with the square of their number.
class LinkedManager : public osgAnimation::BasicAnimationManager {
  public:
    void link(osg::Node*) override { _needToLink = false; }
};

osgAnimation::Channel* makeChannel(osgAnimation::FloatTarget* target) {
    auto* const channel = new osgAnimation::FloatCubicBezierChannel;
    auto* const keys = channel->getOrCreateSampler()->getOrCreateKeyframeContainer();
    for (std::size_t i = 0; i < kKeys; ++i) {
        const float y = keyValue(i);
        keys->push_back(osgAnimation::FloatCubicBezierKeyframe(
            kFramesPerKey * static_cast<double>(i) / kFramesPerSecond,
            osgAnimation::FloatCubicBezier(y, y, y)));
    }
    channel->setTarget(target);
    return channel;
}

double sceneTick(std::size_t count, bool stacked) {
    osg::ref_ptr<osg::Group> root = new osg::Group;
    osg::ref_ptr<LinkedManager> manager = new LinkedManager;
    root->setUpdateCallback(manager);
    osg::ref_ptr<osgAnimation::Animation> animation = new osgAnimation::Animation;
    std::vector<osg::MatrixTransform*> transforms;
    for (std::size_t i = 0; i < count / kNumbers; ++i) {
        auto* const transform = new osg::MatrixTransform;
        root->addChild(transform);
        transforms.push_back(transform);
        for (osgAnimation::FloatTarget* const target :
             stacked ? addStack(*transform) : addCallback(*transform))
            animation->getChannels().push_back(makeChannel(target));
    }
    animation->computeDuration();
    manager->registerAnimation(animation);
    manager->playAnimation(animation);

    osg::ref_ptr<osg::FrameStamp> stamp = new osg::FrameStamp;
    osgUtil::UpdateVisitor visitor;
    visitor.setFrameStamp(stamp);
    unsigned frame = 0;
    double sum = 0.0;
    const double seconds = kv::bench::medianTick([&] {
        stamp->setFrameNumber(++frame);
        stamp->setSimulationTime(frame / kFramesPerSecond);
        visitor.setTraversalNumber(frame);
        root->accept(visitor);
        for (const osg::MatrixTransform* const transform : transforms)
            sum += transform->getMatrix()(3, 0);
    });
    return std::isfinite(sum) && sum != 0.0 ? seconds / static_cast<double>(count) * 1e9 : 0.0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const std::string how = argv[1];
    if (how != "stacked" && how != "callback") return 2;
    const auto count = static_cast<std::size_t>(std::strtoull(argv[2], nullptr, 10));
    std::printf("%.6g\n", sceneTick(count, how == "stacked"));
    std::fflush(stdout);
    std::_Exit(0); // the scene's destruction is not what is measured
}
