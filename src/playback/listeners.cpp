// The listener hub: one process-wide list, and one broadcast for each notification.

#include <kvAnimationEvent.h>

#include <algorithm>
#include <iostream>
#include <list>

namespace {

// Made on first use, so that listeners that are globals of other modules find it.
std::list<kvAnimationEvent*>& listeners() {
    static std::list<kvAnimationEvent*> list;
    return list;
}

void broadcast(void (kvAnimationEvent::*notification)()) {
    for (kvAnimationEvent* listener : listeners())
        (listener->*notification)();
}

} // namespace

kvAnimationEvent::kvAnimationEvent() {
    listeners().push_back(this);
}

// Asking for the list makes it, and makes it outlive this object: the destructor asks again.
kvAnimationEvent::kvAnimationEvent(const kvAnimationEvent&) {
    listeners();
}

kvAnimationEvent& kvAnimationEvent::operator=(const kvAnimationEvent&) {
    return *this;
}

kvAnimationEvent::~kvAnimationEvent() {
    listeners().remove(this);
}

void kvAnimationEvent::listenToPlay() {}
void kvAnimationEvent::listenToTimeLine() {}
void kvAnimationEvent::updateCMFrame() {}
void kvAnimationEvent::updateCEFrame() {}
void kvAnimationEvent::updateGlobal() {}
void kvAnimationEvent::updateLocal() {}
void kvAnimationEvent::updateBlockSize() {}
void kvAnimationEvent::updateClipSize() {}
void kvAnimationEvent::refreshClipMaker() {}
void kvAnimationEvent::refreshCurveEditor() {}
void kvAnimationEvent::refreshAAV() {}
void kvAnimationEvent::refreshCAV() {}
void kvAnimationEvent::refreshTimeLine() {}
void kvAnimationEvent::renameBlock() {}
void kvAnimationEvent::renameClip() {}

void kvAnimationEvent::callAllPlayListeners() {
    std::cout << "calling play listeners" << std::endl;
    broadcast(&kvAnimationEvent::listenToPlay);
}

void kvAnimationEvent::callAllTimeLineListeners() {
    broadcast(&kvAnimationEvent::listenToTimeLine);
}
void kvAnimationEvent::updateClipMakerFrame() {
    broadcast(&kvAnimationEvent::updateCMFrame);
}
void kvAnimationEvent::updateCurveEditorFrame() {
    broadcast(&kvAnimationEvent::updateCEFrame);
}
void kvAnimationEvent::updateGlobalTimeLine() {
    broadcast(&kvAnimationEvent::updateGlobal);
}
void kvAnimationEvent::updateLocalTimeLine() {
    broadcast(&kvAnimationEvent::updateLocal);
}
void kvAnimationEvent::callBlockSizeUpdate(kvMessage&) {
    broadcast(&kvAnimationEvent::updateBlockSize);
}
void kvAnimationEvent::callClipSizeUpdate(kvMessage&) {
    broadcast(&kvAnimationEvent::updateClipSize);
}
void kvAnimationEvent::callClipMakerRefresh() {
    broadcast(&kvAnimationEvent::refreshClipMaker);
}
void kvAnimationEvent::callCurveEditorRefresh() {
    broadcast(&kvAnimationEvent::refreshCurveEditor);
}
void kvAnimationEvent::callAAVRefresh() {
    broadcast(&kvAnimationEvent::refreshAAV);
}
void kvAnimationEvent::callCAVRefresh() {
    broadcast(&kvAnimationEvent::refreshCAV);
}
void kvAnimationEvent::callTimeLineRefresh() {
    broadcast(&kvAnimationEvent::refreshTimeLine);
}
void kvAnimationEvent::callRenameBlock(kvAnimationBlock*) {
    broadcast(&kvAnimationEvent::renameBlock);
}
void kvAnimationEvent::callRenameClip(kvAnimationClip*) {
    broadcast(&kvAnimationEvent::renameClip);
}
