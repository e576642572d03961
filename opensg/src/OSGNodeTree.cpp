// What concerns whole trees: world matrices, volumes, copies, traversal. All of it goes with lists
// of its own instead of nested calls, so that the depth of a scene is bounded by memory only.
#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNode.h>

#include <string>
#include <utility>
#include <vector>

namespace osg {

namespace {

/// A node whose children are being visited.
struct OpenNode {
    NodePtr node;
    UInt32 nextChild;
};

} // namespace

Matrix Node::getToWorld() {
    Matrix result;
    getToWorld(result);
    return result;
}

void Node::getToWorld(Matrix& result) {
    result.setIdentity();
    // From the root down, in the order in which the matrices are multiplied: the other order would
    // round differently. Usual depths need no memory from the heap.
    constexpr std::size_t usual = 64;
    Node* chain[usual];
    std::vector<Node*> rest;
    std::size_t length = 0;
    for (NodePtr node(*this); node != NullFC; node = node->getParent()) {
        if (length < usual)
            chain[length++] = node.getCPtr();
        else
            rest.push_back(node.getCPtr());
    }
    const auto accumulate = [&result](Node* node) {
        const NodeCorePtr core = node->getCore();
        if (core != NullFC) core->accumulateMatrix(result);
    };
    for (auto node = rest.rbegin(); node != rest.rend(); ++node)
        accumulate(*node);
    while (length > 0)
        accumulate(chain[--length]);
}

void Node::invalidateUpwards() {
    for (NodePtr node(*this); node != NullFC && node->mayInvalidate(); node = node->getParent())
        node->getVolume().setValid(false);
}

const DynamicVolume& Node::getVolume(bool update) {
    if (update) updateVolume();
    return _sfVolume.getValue();
}

void Node::getWorldVolume(DynamicVolume& result) {
    updateVolume();
    result = _sfVolume.getValue();
    if (getParent() != NullFC) result.transform(getParent()->getToWorld());
}

void Node::updateVolume() {
    if (_sfVolume.getValue().isValid()) return;
    std::vector<OpenNode> open(1, OpenNode{NodePtr(*this), 0});
    while (!open.empty()) {
        OpenNode& current = open.back();
        if (current.nextChild == current.node->getNChildren()) {
            current.node->recomputeVolume();
            open.pop_back();
            continue;
        }
        const NodePtr child = current.node->getChild(current.nextChild++);
        if (child != NullFC && child->getTravMask() != 0 && !child->getVolume().isValid())
            open.push_back(OpenNode{child, 0});
    }
}

/// The volumes of the children are up to date.
void Node::recomputeVolume() {
    DynamicVolume volume;
    volume.setEmpty();
    for (const NodePtr& child : _mfChildren)
        if (child != NullFC && child->getTravMask() != 0) volume.extendBy(child->getVolume());
    const NodeCorePtr core = getCore();
    if (core != NullFC) core->adjustVolume(volume);
    volume.setValid();
    _sfVolume.setValue(volume);
}

void Node::dump(UInt32 indent, const BitVector) const {
    SLOG << std::string(indent, ' ') << getTypeName() << " with " << getNChildren()
         << " children and " << getAttachments().size() << " attachments" << std::endl;
}

NodePtr makeNodeFor(const NodeCorePtr& core) {
    const NodePtr node = Node::create();
    if (node == NullFC) return node;
    beginEditCP(node, Node::CoreFieldMask);
    node->setCore(core);
    endEditCP(node, Node::CoreFieldMask);
    return node;
}

namespace {

NodePtr cloneNode(const NodePtr& source) {
    const NodePtr copy = Node::create();
    if (copy == NullFC) return copy;
    beginEditCP(copy, Node::TravMaskFieldMask | Node::CoreFieldMask);
    copy->setTravMask(source->getTravMask());
    copy->setCore(source->getCore());
    endEditCP(copy, Node::TravMaskFieldMask | Node::CoreFieldMask);
    return copy;
}

} // namespace

NodePtr cloneTree(const NodePtr& root) {
    if (root == NullFC) return NullFC;
    const NodePtr rootCopy = cloneNode(root);
    if (rootCopy == NullFC) return rootCopy;

    std::vector<std::pair<OpenNode, NodePtr>> open(1, {OpenNode{root, 0}, rootCopy});
    while (!open.empty()) {
        OpenNode& source = open.back().first;
        const NodePtr copy = open.back().second;
        if (source.nextChild == source.node->getNChildren()) {
            changedCP(copy, Node::ChildrenFieldMask);
            open.pop_back();
            continue;
        }
        const NodePtr child = source.node->getChild(source.nextChild++);
        if (child == NullFC) continue;
        const NodePtr childCopy = cloneNode(child);
        copy->addChild(childCopy);
        open.push_back({OpenNode{child, 0}, childCopy});
    }
    return rootCopy;
}

namespace {

/// The walk behind all forms of traverse. `leave` may be null.
Action::ResultE walk(const NodePtr& root, const TraverseEnterFunctor& enter,
                     const TraverseLeaveFunctor* leave) {
    std::vector<OpenNode> open;

    // Enters a node and, unless its children are to be visited, leaves it again.
    const auto visit = [&](NodePtr node) {
        const Action::ResultE result = enter.call(node);
        if (result == Action::Continue && node != NullFC) {
            open.push_back(OpenNode{node, 0});
            return Action::Continue;
        }
        if (leave != nullptr && leave->call(node, result) == Action::Quit) return Action::Quit;
        return result == Action::Quit ? Action::Quit : Action::Continue;
    };

    Action::ResultE result = visit(root);
    while (!open.empty()) {
        OpenNode& current = open.back();
        if (result != Action::Quit && current.nextChild < current.node->getNChildren()) {
            const NodePtr child = current.node->getChild(current.nextChild++);
            if (child != NullFC) result = visit(child);
            continue;
        }
        NodePtr node = current.node;
        open.pop_back();
        if (leave != nullptr && leave->call(node, result) == Action::Quit) result = Action::Quit;
    }
    return result;
}

Action::ResultE walkAll(const std::vector<NodePtr>& roots, const TraverseEnterFunctor& enter,
                        const TraverseLeaveFunctor* leave) {
    for (const NodePtr& root : roots)
        if (walk(root, enter, leave) == Action::Quit) return Action::Quit;
    return Action::Continue;
}

} // namespace

Action::ResultE traverse(const NodePtr& root, TraverseEnterFunctor enter) {
    return walk(root, enter, nullptr);
}

Action::ResultE traverse(const NodePtr& root, TraverseEnterFunctor enter,
                         TraverseLeaveFunctor leave) {
    return walk(root, enter, &leave);
}

Action::ResultE traverse(const std::vector<NodePtr>& roots, TraverseEnterFunctor enter) {
    return walkAll(roots, enter, nullptr);
}

Action::ResultE traverse(const std::vector<NodePtr>& roots, TraverseEnterFunctor enter,
                         TraverseLeaveFunctor leave) {
    return walkAll(roots, enter, &leave);
}

} // namespace osg
