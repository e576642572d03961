// The smallest host: what an application has to provide, and one animation from keys to file and
// back. Ends with 0 when everything came out as it should.
#include <OpenSG/OSGConfig.h>

#include <OSGCameraSetting.h>

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationController2.h>
#include <kvAnimationCurve.h>
#include <kvAnimationEvent.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationUtils2.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSceneFileHandler.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <tuple>

namespace {

using Manager = kvAnimationManager2;
using Controller = kvAnimationController2;
Manager& manager = Manager::_the;
bool allIsWell = true;

void expect(const char* what, float got, float wanted) {
    const bool well = std::fabs(got - wanted) < 1e-3F;
    std::printf("%-44s %8.3f%s\n", what, static_cast<double>(got), well ? "" : "  WRONG");
    allIsWell = allIsWell && well;
}

//! [callbacks]
/// What the library asks its host for: a clock, the viewer's camera, the up axis, scripts.
struct Viewer {
    double seconds = 0.0;
    std::tuple<osg::Pnt3f, osg::Pnt3f, osg::Vec3f> camera; // from, at, up
    float fov = 45.0F;
    bool zUp = false;
    int scripts = 0;
} viewer;

void installCallbacks() {
    Manager::setSimulationTimeCB([] { return viewer.seconds; });
    Manager::setGetFromAtUpCB([](int, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
        std::tie(from, at, up) = viewer.camera;
    });
    Manager::setFromAtUpCB([](int, auto& from, auto& at, auto& up) {
        viewer.camera = {from, at, up};
    });
    Manager::setGetFovCB([] { return viewer.fov; });
    Manager::setFovCB([](float fov) { viewer.fov = fov; });
    Manager::setGetZUpCB([] { return viewer.zUp; });
    Manager::setZUpCB([](bool zUp) { viewer.zUp = zUp; });
    Manager::setExecuteSequenceCB([](std::string) { ++viewer.scripts; });
    osg::CameraSetting::setZUpCB(&Manager::getZUp);
    Controller::setAnimationManager(&manager);
    Controller::setFPS(25.0F);
}
//! [callbacks]

//! [view]
/// A view: told when there is something new to show, for as long as it lives.
class TimeLine : public kvAnimationEvent {
  public:
    int frames = 0;
    void updateCMFrame() override { ++frames; }
};
//! [view]

osg::NodePtr addNode(const osg::NodePtr& parent, const char* name, const osg::NodeCorePtr& core) {
    const osg::NodePtr node = osg::Node::create();
    osg::setName(node, name);
    node->setCore(core);
    if (parent != osg::NullFC) parent->addChild(node);
    return node;
}

//! [keying]
/// A curve from `low` at frame 0 to `high` at frame 50 that starts and ends at rest.
void key(const osg::NodePtr& node, const char* attribute, double low, double high) {
    manager.createAnimation(attribute);
    kvAnimationCurve* curve = manager.getLastInsertedCurve();
    curve->setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(curve); // finds the field that the name means
    curve->insertCP(0.0, low);
    curve->insertCP(50.0, high);
    manager.setSelectedCurves({curve}); // what the editor shows
    manager.selectCurve(curve);         // all its keys
    manager.computeTangentsOfSelectedCPs(kvControlPoint::Flat);
    manager.deselectAllCurvesCPs();
}
//! [keying]

//! [clip]
/// Moves the curves of the nodes into blocks, and the blocks onto a clip with a script.
kvAnimationClip* makeClip(const osg::NodePtr& bulb, const osg::NodePtr& camera) {
    kvAnimationBlock* light = manager.createBlock(bulb, "light", false); // named "light_Block_1"
    kvAnimationBlock* view = manager.createBlock(camera, "view", true);
    manager.clearCurveLists(); // the blocks own the curves now,
    manager.clearBlockList();  // and the clip will own the blocks
    kvAnimationClip* clip = manager.newClip("show");
    clip->addBlock(light);
    clip->addBlock(view);
    auto* chime = new kvAnimationSequence2("chime"); // a script of the host
    chime->setStartFrame(20.0F);
    chime->setEndFrame(30.0F);
    clip->addSequence(chime);
    return clip;
}
//! [clip]

//! [playing]
/// What the host's timer does: let the clock run and tick, until the clip is over.
void play(kvAnimationClip* clip) {
    Controller::play(clip, false, false);
    for (int tick = 0; tick <= 60; ++tick) {
        viewer.seconds += 0.04;
        Controller::animationLoop();
    }
}
//! [playing]

//! [saving]
bool save(const osg::NodePtr& root, const std::string& file) {
    manager.exportClips(root, false); // onto the root, as records that the file writer saves
    const bool written = osg::SceneFileHandler::the().write(root, file.c_str());
    kvAnimationAttachmentInteraction::cleanAnimationAttachment(
        root, false); // records and nodes count each other
    return written;
}

/// The scene of a file, counted once for the caller, with its clips registered.
osg::NodePtr load(const std::string& file) {
    osg::NodePtr root = osg::SceneFileHandler::the().read(file.c_str(), nullptr);
    if (root == osg::NullFC || root->getNChildren() == 0) return osg::NullFC;
    osg::addRefCP(root); // before reading records: they may be all that holds the scene
    manager.importClips(root->getChild(0), osg::NullFC, false);
    return root;
}
//! [saving]

void forgetClips() {
    Controller::stop();
    for (kvAnimationClip* clip : *manager.getClips())
        delete clip; // with its tracks, blocks, curves
    manager.clear(true);
}

} // namespace

int main(int argc, char** argv) {
    if (!osg::osgInit(argc, argv)) return 1;
    const std::string file = argc > 1 ? argv[1] : "smallestHost.osg"; // removed at the end
    installCallbacks();
    TimeLine timeLine;

    osg::NodePtr root = addNode(osg::NullFC, "scene", osg::Group::create());
    osg::addRefCP(root);
    const osg::NodePtr lamp = addNode(root, "lamp", osg::ComponentTransform::create());
    const osg::NodePtr bulb = addNode(root, "bulb", osg::PointLight::create());
    const osg::NodePtr camera = addNode(root, "camera", osg::CameraSetting::create());
    const auto light = osg::PointLightPtr::dcast(bulb->getCore());
    light->setBeacon(lamp); // the node that carries the light about
    osg::CameraSettingPtr::dcast(camera->getCore())->setDistance(10.0F);

    key(bulb, "translateX", 0.0, 8.0);
    key(bulb, "diffuseR", 1.0, 0.0);
    key(camera, "turnTableAngle", 0.0, 90.0);
    play(makeClip(bulb, camera));

    const auto transform = osg::ComponentTransformPtr::dcast(lamp->getCore());
    expect("played: the lamp has moved to x", transform->getTranslation()[0], 8.0F);
    expect("played: the bulb's red is", light->getDiffuse()[0], 0.0F);
    expect("played: the viewer looks from z", std::get<0>(viewer.camera)[2], 10.0F);
    expect("played: the script ran, times", static_cast<float>(viewer.scripts), 11.0F);
    expect("played: the view was told, times", static_cast<float>(timeLine.frames), 51.0F);

    const bool written = save(root, file);
    forgetClips();
    osg::subRefCP(root);
    root = written ? load(file) : osg::NodePtr(osg::NullFC);
    kvAnimationBlock* block = manager.getBlock("light_Block_1", false);
    kvAnimationCurve* moved = block != nullptr ? block->getBlockCurve("translateX") : nullptr;
    expect("reloaded: translateX at frame 25", Manager::computeCurveValue(moved, 25.0F), 4.0F);
    forgetClips();
    if (root != osg::NullFC) osg::subRefCP(root);
    std::remove(file.c_str());
    return allIsWell ? 0 : 1;
}
