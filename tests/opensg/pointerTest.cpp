// Pointers to containers: null, conversions, comparison, text.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <type_traits>

namespace {

using namespace osg;

static_assert(std::is_base_of<FieldContainerPtrBase, FieldContainerPtr>::value, "");
static_assert(std::is_base_of<FieldContainerPtr, AttachmentContainerPtr>::value, "");
static_assert(std::is_base_of<FieldContainerPtr, AttachmentPtr>::value, "");
static_assert(std::is_base_of<AttachmentContainerPtr, NodePtr>::value, "");
static_assert(std::is_base_of<AttachmentContainerPtr, NodeCorePtr>::value, "");
static_assert(!std::is_base_of<NodePtr, NodeCorePtr>::value, "");
static_assert(std::is_base_of<AttachmentPtr, TestReelPtr>::value, "");
static_assert(std::is_base_of<NodePtr, TestMarkedNodePtr>::value, "");
static_assert(std::is_convertible<TestMarkedNodePtr, NodePtr>::value, "up is implicit");
static_assert(!std::is_convertible<NodePtr, TestMarkedNodePtr>::value, "down is not");
static_assert(!std::is_convertible<FieldContainerPtr, NodePtr>::value, "down is not");
static_assert(!std::is_convertible<std::nullptr_t, NodePtr>::value, "NullFC is the null");
static_assert(!std::is_convertible<int, NodePtr>::value, "NullFC is the null");

NodePtr nothing() {
    return NullFC;
}

TEST(Pointer, isNullByDefault) {
    NodePtr node;
    FieldContainerPtr container;
    TestShelfPtr core;
    EXPECT_TRUE(node == NullFC);
    EXPECT_TRUE(NullFC == container);
    EXPECT_FALSE(core != NullFC);
    EXPECT_FALSE(NullFC != core);
    EXPECT_TRUE(!node);
    EXPECT_FALSE(node ? true : false);
    EXPECT_TRUE(nothing() == NullFC);
}

TEST(Pointer, takesNullInEveryWay) {
    Held<NodePtr> held(Node::create());
    NodePtr node = held;
    EXPECT_TRUE(node ? true : false);
    node = NullFC;
    EXPECT_TRUE(node == NullFC);
    const bool wanted = held.get() != NullFC;
    NodePtr chosen = wanted ? held.get() : NullFC;
    EXPECT_TRUE(chosen == held.get());
    chosen = wanted ? NullFC : held.get();
    EXPECT_TRUE(chosen == NullFC);
    NodePtr constructed(NullFC);
    EXPECT_TRUE(constructed == NullFC);
}

TEST(Pointer, ofNullGivesANullObject) {
    NodePtr node;
    EXPECT_TRUE(node.getCPtr() == NULL);
    EXPECT_TRUE(getCPtr(node) == NULL);
    EXPECT_EQ(node.getRefCount(), 0);
}

TEST(Pointer, givesTheObject) {
    Held<TestShelfPtr> core(TestShelf::create());
    TestShelf* object = getCPtr(core.get());
    EXPECT_EQ(object, core.get().getCPtr());
    EXPECT_EQ(object, core.get().operator->());
    EXPECT_EQ(object, &*core.get());
    EXPECT_TRUE(TestShelfPtr(object) == core.get());
    EXPECT_TRUE(TestShelfPtr(*object) == core.get());
}

TEST(Pointer, canBeMadeFromAnObjectOfTheBasicClasses) {
    Held<NodePtr> node(Node::create());
    EXPECT_TRUE(NodePtr(node.get().getCPtr()) == node.get());
    EXPECT_TRUE(NodePtr(*node.get()) == node.get());
    EXPECT_TRUE(AttachmentContainerPtr(node.get().getCPtr()) == node.get());
}

TEST(Pointer, coreByDotIsTheObjectByArrowThePointer) {
    Held<NodePtr> node(Node::create());
    EXPECT_TRUE(node.get().getCore() == NULL);
    node->setCore(TestShelf::create());
    NodeCore* object = node.get().getCore();
    NodeCorePtr pointer = node->getCore();
    EXPECT_EQ(object, pointer.getCPtr());
}

TEST(Pointer, comparesContainersNotTypes) {
    Held<TestMarkedNodePtr> marked(TestMarkedNode::create());
    const NodePtr node = marked.get();
    const FieldContainerPtr container = node;
    EXPECT_TRUE(node == marked.get());
    EXPECT_TRUE(marked.get() == container);
    Held<NodePtr> other(Node::create());
    EXPECT_TRUE(other.get() != container);
    EXPECT_TRUE((other.get() < node) != (node < other.get()));
    EXPECT_FALSE(node < marked.get());
}

TEST(Pointer, castsDownToWhatTheContainerIs) {
    Held<TestMarkedNodePtr> marked(TestMarkedNode::create());
    const FieldContainerPtr container = marked.get();
    EXPECT_TRUE(TestMarkedNodePtr::dcast(container) == marked.get());
    EXPECT_TRUE(NodePtr::dcast(container) == marked.get());
    EXPECT_TRUE(AttachmentContainerPtr::dcast(container) == marked.get());
    EXPECT_TRUE(AttachmentPtr::dcast(container) == NullFC);
    EXPECT_TRUE(NodeCorePtr::dcast(container) == NullFC);
    EXPECT_TRUE(TestShelfPtr::dcast(container) == NullFC);
}

TEST(Pointer, castOfAPlainNodeIsNoDerivedOne) {
    Held<NodePtr> node(Node::create());
    EXPECT_TRUE(TestMarkedNodePtr::dcast(node.get()) == NullFC);
    EXPECT_TRUE(NodePtr::dcast(node.get()) == node.get());
}

TEST(Pointer, castOfNullIsNull) {
    EXPECT_TRUE(NodePtr::dcast(NullFC) == NullFC);
    EXPECT_TRUE(TestShelfPtr::dcast(NodePtr()) == NullFC);
    EXPECT_TRUE(AttachmentPtr::dcast(FieldContainerPtr()) == NullFC);
}

TEST(Pointer, servesAsAKey) {
    Held<NodePtr> a(Node::create());
    Held<NodePtr> b(Node::create());
    std::map<NodePtr, int> numbers;
    numbers[a] = 1;
    numbers[b] = 2;
    numbers[NodePtr()] = 3;
    EXPECT_EQ(numbers.size(), 3u);
    EXPECT_EQ(numbers[a], 1);
    EXPECT_EQ(numbers[b], 2);
}

TEST(Pointer, constnessIsThatOfTheVariable) {
    Held<NodePtr> held(Node::create());
    const NodePtr& node = held.get();
    node->setTravMask(5);
    EXPECT_EQ(node->getTravMask(), 5u);
}

template <class P>
std::string textOf(const P& pointer) {
    std::ostringstream stream;
    stream << pointer;
    return stream.str();
}

/// How the stream prints an address, after the 0x that pointers put in front.
std::string address(const void* object) {
    std::ostringstream stream;
    stream << "0x" << object;
    return stream.str();
}

TEST(PointerText, ofNullSaysSo) {
    const NodePtr node;
    EXPECT_EQ(textOf(node), "NodePtr " + address(&node) + ":NullFC");
    const FieldContainerPtr container;
    EXPECT_EQ(textOf(container), "FieldContainerPtr " + address(&container) + ":NullFC");
    const TestShelfPtr core;
    EXPECT_EQ(textOf(core), "FCPtr " + address(&core) + ":NullFC");
}

TEST(PointerText, namesTheTypeOfTheContainer) {
    Held<TestMarkedNodePtr> marked(TestMarkedNode::create());
    const std::string object = address(marked.get().getCPtr());
    const NodePtr node = marked.get();
    EXPECT_EQ(textOf(node), "NodePtr " + address(&node) + ":TestMarkedNodePtr(" + object + ")");
    EXPECT_EQ(textOf(marked.get()),
              "FCPtr " + address(&marked.get()) + ":TestMarkedNodePtr(" + object + ")");
}

TEST(PointerText, beginsWithTheWordOfNodesForAttachmentsToo) {
    Held<TestShotListPtr> list(TestShotList::create());
    const AttachmentPtr attachment = list.get();
    EXPECT_EQ(textOf(attachment), "NodePtr " + address(&attachment) + ":TestShotListPtr(" +
                                      address(list.get().getCPtr()) + ")");
    const AttachmentContainerPtr container;
    EXPECT_EQ(textOf(container), "NodePtr " + address(&container) + ":NullFC");
}

TEST(PointerText, leavesTheStreamDecimal) {
    Held<NodePtr> node(Node::create());
    std::ostringstream stream;
    stream << std::hex << node.get();
    stream.str("");
    stream << 255;
    EXPECT_EQ(stream.str(), "255");
}

} // namespace
