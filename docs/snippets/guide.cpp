// The code that the guide quotes, between its markers, in programs that run: each function checks
// what the guide says about its snippet.
#include <OpenSG/OSGConfig.h>

#include <kvAnimManager.h>
#include <OSGAnimAttachment.h>
#include <OSGCameraSetting.h>

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationController2.h>
#include <kvAnimationConverter.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>
#include <kvAnimationUtils2.h>
#include <kvOpenSGUtils.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

kvAnimationManager2& manager = kvAnimationManager2::_the;
bool allIsWell = true;

void check(bool holds, const char* what) {
    if (holds) return;
    std::printf("not so: %s\n", what);
    allIsWell = false;
}

osg::NodePtr makeNode(const osg::NodeCorePtr& core) {
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    node->setCore(core);
    return node;
}

void show(float) {}

void keysAndHandles() {
    //! [keys]
    kvAnimationCurve curve("translateX");
    curve.insertCP(0.0, 0.0); // frame, value
    curve.insertCP(20.0, 8.0);
    curve.insertCP(40.0, 4.0);
    curve.insertCP(20.0, 9.0); // replaces the key at exactly that frame
    //! [keys]
    check(curve.getCPs().size() == 3, "a key at the same frame replaces");

    //! [types]
    curve.setTangentLength(kvControlPointManager::Third); // recomputes nothing by itself
    curve.selectAllCPs();
    curve.computeTangents(kvControlPoint::Smooth); // of the selected keys, from now on
    //! [types]
    check(curve.getCPs()[1].getTangentType() == kvControlPoint::Smooth, "types are set");

    //! [user]
    kvControlPoint& key = curve.getCPs()[1];
    key.setTangentType(kvControlPoint::User); // nobody else moves its handles any more
    key.setInTangent({12.0, 9.0});            // a place (frame, value), not a direction
    key.setOutTangent({32.0, 9.0});
    //! [user]
    check(key.getOutTangentDx() == 12.0, "handles are places");

    //! [value]
    const float value = kvAnimationManager2::computeCurveValue(&curve, 30.0F);
    if (value != -1.0e23F) show(value); // the sentinel: no value at this frame
    //! [value]
    check(value < 9.0F && value > 4.0F, "between the keys' values");
    check(kvAnimationManager2::computeCurveValue(&curve, -5.0F) == 0.0F, "first value before");
    check(kvAnimationManager2::computeCurveValue(&curve, 99.0F) == 4.0F, "last value after");

    //! [held]
    curve.selectAllCPs();
    curve.constantCurveInterval(); // between selected neighbours the value of the first one holds
    //! [held]
    check(kvAnimationManager2::computeCurveValue(&curve, 39.0F) == 9.0F, "held");

    //! [moving]
    curve.moveCPTo(&curve.getCPs()[0], 5.0F, 1.0F); // one key; the list sorts itself
    curve.stretchRight(50.0F);                      // the last key to frame 50, all others along
    curve.flip();                                   // backwards in time
    //! [moving]
    check(curve.getStartFrame() == 5.0 && curve.getEndFrame() == 50.0, "moved and stretched");
}

void bindings() {
    osg::NodePtr node = makeNode(osg::ComponentTransform::create());
    std::size_t found = 0;
    //! [discover]
    kvAnimationUtils2::addAnimationAttributes("translation,scale,diffuse,visible");
    for (const auto& field : kvAnimationUtils2::getAnimationFields(node, node->getCore())) {
        std::printf("%s %g\n", field.fieldName.c_str(), static_cast<double>(field.value));
        ++found;
    }
    //! [discover]
    check(found == 6, "translation and scale, three numbers each");

    //! [bind]
    auto curve = std::make_unique<kvAnimationCurve>("translateY");
    curve->setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(curve.get());
    //! [bind]
    check(curve->getAnimationField().valuePosition == 1, "Y is the second number");

    //! [write]
    kvAnimationUtils2::AnimationField field = curve->getAnimationField();
    field.value = 2.5F;
    kvAnimationUtils2::setRealFieldValue(field);
    const float readBack = kvAnimationUtils2::getRealFieldValue(field);
    //! [write]
    check(readBack == 2.5F, "what is written is read");
    osg::subRefCP(node);
}

kvAnimationBlock* makeBlock(const osg::NodePtr& node, double start, double end) {
    auto* curve = new kvAnimationCurve("translateX");
    curve->setAppropriateNode(node);
    kvAnimationUtils2::createAnimationField(curve);
    curve->insertCP(start, start);
    curve->insertCP(end, end);
    auto* block = new kvAnimationBlock(node, "walk");
    block->addCurve(curve);
    return block;
}

void blocksAndClips() {
    osg::NodePtr node = makeNode(osg::ComponentTransform::create());
    const auto transform = osg::ComponentTransformPtr::dcast(node->getCore());
    std::unique_ptr<kvAnimationBlock> owner(makeBlock(node, 0.0, 25.0));
    kvAnimationBlock* block = owner.get();

    //! [evaluate]
    const float frame = block->getEndFrame();
    kvAnimationController2::execute(manager.getUpdatedAnimationFields(block, frame, false, false));
    //! [evaluate]
    check(transform->getTranslation()[0] == 25.0F, "the scene follows");

    //! [tracks]
    kvAnimationClip clip("show");
    clip.addBlock(new kvAnimationBlock(*block)); // a copy, on a track of its own: track 0
    auto* later = new kvAnimationBlock(*block);  // copies own curves of their own
    later->moveBlock(50.0F);                     // its keys with it
    clip.insertBlock(later, 0);                  // on the same track
    clip.newSubclip()->addBlock(makeBlock(node, 60.0, 90.0)); // nested, on track 1
    auto* script = new kvAnimationSequence2("doors.open");
    script->setStartFrame(30.0F);
    script->setEndFrame(30.0F);
    clip.insertSequence(script, 0); // beside the blocks
    //! [tracks]
    check(clip.getTrackAmount() == 2, "two tracks");
    check(clip.getStartFrame() == 0.0F && clip.getEndFrame() == 90.0F, "range of a clip");

    //! [time]
    clip.move(10.0F);          // everything, at every depth
    clip.stretchRight(190.0F); // ends there and starts where it did
    clip.setFliped(true);      // each track backwards within its own range; so does every call
    //! [time]
    check(std::fabs(clip.getStartFrame() - 10.0F) < 1e-3F, "moved");
    osg::subRefCP(node);
}

void playback() {
    osg::NodePtr node = makeNode(osg::ComponentTransform::create());
    std::unique_ptr<kvAnimationBlock> block(makeBlock(node, 0.0, 25.0));
    static double seconds = 0.0;
    kvAnimationManager2::setSimulationTimeCB([] { return seconds; });
    kvAnimationController2::setAnimationManager(&manager);

    //! [tick]
    kvAnimationController2::setFPS(25.0F);
    kvAnimationController2::play(block.get(), false, false); // sets state, moves nothing
    seconds += 0.5;                                          // the host's clock runs
    kvAnimationController2::animationLoop();                 // the host's timer ticks
    //! [tick]
    check(kvAnimationController2::getActualFrame() == 12.5F, "half a second is 12.5 frames");

    //! [stop]
    kvAnimationController2::stop();                 // the scene stays as it is
    kvAnimationController2::gotoStart(block.get()); // or: show the first frame
    //! [stop]
    const auto transform = osg::ComponentTransformPtr::dcast(node->getCore());
    check(transform->getTranslation()[0] == 0.0F, "the first frame is shown");
    kvAnimationManager2::setSimulationTimeCB(nullptr);
    osg::subRefCP(node);
}

void storage(const std::string& file) {
    osg::NodePtr root = makeNode(osg::ComponentTransform::create());
    manager.addAnimationBlock(makeBlock(root, 0.0, 25.0));
    std::unique_ptr<kvAnimationBlock> block(manager.getLastInsertedBlock());
    //! [store]
    manager.exportBlocks(); // each block onto its node
    const bool saved = osg::SceneFileHandler::the().write(root, file.c_str());
    //! [store]
    check(saved, "written");
    manager.clear(true);
    kvAnimationAttachmentInteraction::cleanAnimationAttachment(root, false);
    osg::subRefCP(root);

    //! [read]
    osg::NodePtr scene = osg::SceneFileHandler::the().read(file.c_str(), nullptr);
    osg::addRefCP(scene);                                // before reading what is stored
    kvAnimationManager2::buildAnimationBlockList(scene); // consumes the records
    const std::vector<kvAnimationBlock*> blocks = manager.getSceneBlocks();
    //! [read]
    check(blocks.size() == 1 && blocks[0]->getBlockName() == "walk", "the block is back");
    for (kvAnimationBlock* read : blocks)
        std::default_delete<kvAnimationBlock>{}(read);
    manager.clear(true);
    osg::subRefCP(scene);
    std::remove(file.c_str());
}

void conversion() {
    osg::NodePtr scene = makeNode(osg::ComponentTransform::create());
    std::unique_ptr<kvAnimationBlock> block(makeBlock(scene, 0.0, 25.0));
    kvAnimationAttachmentInteraction::createNewAnimationAttachment(scene, false);
    kvAnimationAttachmentInteraction::addBlockToAnimAttachment(scene, block.get(), false);
    //! [convert]
    kvAnimManager::setFps(25.0); // keys turn from frames into seconds
    kvAnimationConverter::convertR(scene);
    //! [convert]
    check(kvAnimManager::getAnimAttachment(scene) != osg::NullFC, "animation nodes hang there");
    check(kvAnimationAttachmentInteraction::getAnimationAttachment(scene, false) == osg::NullFC,
          "the records are gone");
    osg::subRefCP(scene);
}

void hostMessages() {
    //! [messages]
    kvOpenSGUtils::setHandler([](const std::string& name, const kvMessage&, int) {
        if (name == "activateCamera") std::puts("the viewer looks through another camera");
    });
    //! [messages]
    kvOpenSGUtils::setHandler({});
}

} // namespace

int main(int argc, char** argv) {
    if (!osg::osgInit(1, argv)) return 1;
    keysAndHandles();
    bindings();
    blocksAndClips();
    playback();
    storage(argc > 1 ? argv[1] : "snippets.osg");
    conversion();
    hostMessages();
    return allIsWell ? 0 : 1;
}
