#pragma once

#include <kvControlPointManager.h>

#include "support/access/kvControlPoint.h"
#include "support/access/kvControlPointManager.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace kv::test {

using State = kvTestAccess<kvControlPointManager>;
using Links = kvTestAccess<kvControlPoint>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A key list whose protected operations can be called.
class OpenKeyList : public kvControlPointManager {
  public:
    using kvControlPointManager::findCP;
    using kvControlPointManager::insertCP;
};

/// Reading through these does not tell the list that its keys may change.
inline const std::vector<kvControlPoint>& keysOf(const kvControlPointManager& list) {
    return list.getCPs();
}

inline const kvControlPoint& keyAt(const kvControlPointManager& list, std::size_t index) {
    return list.getCPs().at(index);
}

inline std::vector<double> framesOf(const kvControlPointManager& list) {
    std::vector<double> frames;
    for (const kvControlPoint& cp : list.getCPs())
        frames.push_back(cp.getPoint().x);
    return frames;
}

inline std::vector<double> valuesOf(const kvControlPointManager& list) {
    std::vector<double> values;
    for (const kvControlPoint& cp : list.getCPs())
        values.push_back(cp.getPoint().y);
    return values;
}

/// Every key is linked to the keys beside it, the ends to nothing.
inline void expectLinked(const kvControlPointManager& list) {
    const std::vector<kvControlPoint>& keys = list.getCPs();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(Links::previous(keys[i]), i == 0 ? nullptr : &keys[i - 1]) << "key " << i;
        EXPECT_EQ(Links::next(keys[i]), i + 1 == keys.size() ? nullptr : &keys[i + 1])
            << "key " << i;
    }
}

} // namespace kv::test
