// What exists before main() runs: a host's global objects may make keys and curves, register
// attribute names and fill the manager, whatever the order in which globals are constructed.

#include "manager/fixture.h"

#include <kvAnimationUtils2.h>

using namespace kv::test;

namespace {

struct EarlyHost {
    EarlyHost() : key(1.0, 2.0, 5), wasIssued(kvAnimationManager2::checkId(idOf(key))) {
        kvAnimationUtils2::addAnimationAttribute("registered before main");
        curve.insertCP(3.0, 4.0);
        kvAnimationManager2::_the.addCurve(&curve);
        wasListed = kvAnimationManager2::_the.getLastInsertedCurve() == &curve;
        kvAnimationManager2::_the.subCurve(&curve);
    }

    static unsigned long long idOf(const kvControlPoint& key) {
        return static_cast<unsigned long long>(key.getId());
    }

    kvControlPoint key;
    kvAnimationCurve curve;
    bool wasIssued;
    bool wasListed = false;
};

EarlyHost earlyHost;

TEST(Statics, keysMadeBeforeMainHaveIssuedIds) {
    EXPECT_TRUE(earlyHost.wasIssued);
    EXPECT_TRUE(kvAnimationManager2::checkId(EarlyHost::idOf(earlyHost.key)))
        << "nothing that was constructed later has forgotten it";
    EXPECT_EQ(earlyHost.curve.getCPs().size(), 1U);
}

TEST(Statics, namesRegisteredBeforeMainStay) {
    EXPECT_TRUE(kvAnimationUtils2::isAnimationAttribute("registered before main"));
}

TEST(Statics, theManagerServesBeforeMain) {
    EXPECT_TRUE(earlyHost.wasListed);
}

} // namespace
