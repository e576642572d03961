// The references of containers that are being destroyed, released without recursion.
#include "OSGLateReleases.h"

#include <OpenSG/OSGFieldContainer.h>

#include <vector>

OSG_BEGIN_NAMESPACE

namespace kvtable {

namespace {

struct Chain {
    bool isRunning = false;
    std::vector<FieldContainerPtr> waiting;
};

Chain& chain() {
    thread_local Chain ofThread;
    return ofThread;
}

} // namespace

LateReleases::LateReleases() : _isOutermost(!chain().isRunning) {
    chain().isRunning = true;
}

LateReleases::~LateReleases() {
    if (!_isOutermost) return;
    std::vector<FieldContainerPtr>& waiting = chain().waiting;
    while (!waiting.empty()) {
        FieldContainerPtr released = waiting.back();
        waiting.pop_back();
        subRefCP(released);
    }
    // A scene that was destroyed once does not keep its memory.
    std::vector<FieldContainerPtr>().swap(waiting);
    chain().isRunning = false;
}

void LateReleases::add(const FieldContainerPtr& container) {
    if (container != NullFC) chain().waiting.push_back(container);
}

} // namespace kvtable

OSG_END_NAMESPACE
