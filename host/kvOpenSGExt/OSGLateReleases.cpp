// The references of containers that are being destroyed, released without recursion.
#include "OSGLateReleases.h"

#include <OpenSG/OSGFieldContainer.h>

#include <vector>

OSG_BEGIN_NAMESPACE

namespace kvtable {

namespace {

// Neither is an object with a destructor of its own: every container of a scene comes here when it
// goes, and static objects may release containers after a thread's own objects are gone.
thread_local bool isRunning = false;
thread_local std::vector<FieldContainerPtr>* waiting = nullptr; // made when first needed

} // namespace

LateReleases::LateReleases() : _isOutermost(!isRunning) {
    isRunning = true;
}

LateReleases::~LateReleases() {
    if (!_isOutermost) return;
    while (waiting != nullptr && !waiting->empty()) {
        FieldContainerPtr released = waiting->back();
        waiting->pop_back();
        subRefCP(released);
    }
    // A scene that was destroyed once does not keep its memory.
    delete waiting;
    waiting = nullptr;
    isRunning = false;
}

void LateReleases::add(const FieldContainerPtr& container) {
    if (container == NullFC) return;
    if (waiting == nullptr) waiting = new std::vector<FieldContainerPtr>;
    waiting->push_back(container);
}

} // namespace kvtable

OSG_END_NAMESPACE
