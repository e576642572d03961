// What works before osgInit, and what osgInit promises. The objects below are made while the
// program's static objects are, before main starts the library.
#include "opensg/testContainers.h"

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGThread.h>

#include <gtest/gtest.h>

namespace {

using namespace osg;

struct BeforeInit {
    SystemState state = GlobalSystemState;
    NodePtr created = Node::create();
    TestShotListPtr ownCreated = TestShotList::create();
    FieldContainerType* found = FieldContainerFactory::the()->findType("Node");
    NodePtr null;
    NodePtr copyOfNull = null;
    bool nullsAreEqual = null == copyOfNull;
};

const BeforeInit before;

TEST(BeforeInit, nothingCanBeCreated) {
    EXPECT_EQ(before.state, Startup);
    EXPECT_TRUE(before.created == NullFC);
    EXPECT_TRUE(before.ownCreated == NullFC);
}

TEST(BeforeInit, typesAreNotFound) {
    EXPECT_TRUE(before.found == NULL);
}

TEST(BeforeInit, nullPointersAreFine) {
    EXPECT_TRUE(before.nullsAreEqual);
    EXPECT_TRUE(before.copyOfNull == NullFC);
}

TEST(Init, mayBeCalledAgain) {
    EXPECT_EQ(GlobalSystemState, Running);
    EXPECT_TRUE(osgInit(0, NULL));
    EXPECT_EQ(GlobalSystemState, Running);
}

TEST(Threads, mainThreadWorksInAspectZero) {
    EXPECT_EQ(Thread::getAspect(), 0u);
    EXPECT_GE(ThreadManager::getNumAspects(), 1u);
}

int shutDown() {
    osgExit();
    if (GlobalSystemState != Shutdown) return 1;
    NodePtr node = Node::create();
    if (node != NullFC) return 2;
    if (FieldContainerFactory::the()->getContainer(1) != NullFC) return 3;
    return 0;
}

// In a process of their own, since there is no way back.
TEST(ExitDeathTest, nothingIsCreatedOrFoundAfterwards) {
    EXPECT_EXIT(std::_Exit(shutDown()), ::testing::ExitedWithCode(0), "");
}

TEST(ExitDeathTest, initAfterwardsEndsTheProcess) {
    EXPECT_DEATH(
        {
            osgExit();
            osgInit(0, NULL);
        },
        "");
}

} // namespace
