// Looks through a whole scene for broken links, without recursion: it may be deep.

#include "support/wellFormed.h"

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGNodeCore.h>

#include <set>
#include <vector>

using namespace osg;

namespace kvtest {

namespace {

class Inspection {
  public:
    explicit Inspection(const NodePtr& root) {
        meet(root);
        while (_fault.empty() && !_open.empty()) {
            const FieldContainerPtr next = _open.back();
            _open.pop_back();
            inspect(next);
        }
    }

    const std::string& fault() const { return _fault; }

  private:
    void require(bool sound, const char* fault) {
        if (!sound && _fault.empty()) _fault = fault;
    }

    /// \return whether the container is met for the first time.
    bool meet(const FieldContainerPtr& container) {
        const UInt32 id = getContainerId(container);
        if (!_met.insert(id).second) return false;
        require(FieldContainerFactory::the()->getContainer(id) == container,
                "a pointer leads to a container that is gone");
        if (_fault.empty()) _open.push_back(container);
        return true;
    }

    void inspect(const FieldContainerPtr& container) {
        const NodePtr node = NodePtr::dcast(container);
        if (node != NullFC) inspectNode(node);
        const AttachmentContainerPtr carrier = AttachmentContainerPtr::dcast(container);
        if (carrier != NullFC) {
            for (const auto& entry : carrier->getAttachments()) {
                require(entry.second != NullFC, "an attachment is null");
                if (entry.second == NullFC) continue;
                require(entry.second->hasParent(carrier), "an attachment does not know its parent");
            }
        }
        forEachPointer(container, [this](const FieldContainerPtr& target) { meet(target); });
    }

    void inspectNode(const NodePtr& node) {
        if (node->getCore() != NullFC)
            require(node->getCore()->getParents().find(node) != node->getCore()->getParents().end(),
                    "a core does not know its node");
        for (UInt32 i = 0; i < node->getNChildren(); ++i) {
            const NodePtr child = node->getChild(i);
            require(child != NullFC, "a child is null");
            if (child == NullFC) return;
            require(child->getParent() == node, "a child does not know its parent");
            require(_children.insert(getContainerId(child)).second, "a node stands in two places");
        }
    }

    std::set<UInt32> _met;
    std::set<UInt32> _children;
    std::vector<FieldContainerPtr> _open;
    std::string _fault;
};

} // namespace

void forEachPointer(const FieldContainerPtr& container,
                    const std::function<void(const FieldContainerPtr&)>& visit) {
    const AttachmentContainerPtr carrier = AttachmentContainerPtr::dcast(container);
    if (carrier != NullFC)
        for (const auto& entry : carrier->getAttachments())
            if (entry.second != NullFC) visit(entry.second);
    const FieldContainerType& type = container->getType();
    for (UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription& description = *type.getFieldDescription(i);
        if (description.isInternal()) continue; // parents
        const Field* field = container->getField(description.getFieldId());
        if (const auto* single = dynamic_cast<const SFFieldContainerPtr*>(field)) {
            if (single->getValue() != NullFC) visit(single->getValue());
        } else if (const auto* list = dynamic_cast<const MFFieldContainerPtr*>(field)) {
            for (const FieldContainerPtr& target : *list)
                if (target != NullFC) visit(target);
        }
    }
}

std::string faultOf(const NodePtr& root) {
    return Inspection(root).fault();
}

} // namespace kvtest
