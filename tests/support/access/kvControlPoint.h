#pragma once

#include <kvControlPoint.h>

/// The links of a key, which the interface does not show.
template <>
struct kvTestAccess<kvControlPoint> {
    static kvControlPoint*& next(kvControlPoint& cp) { return cp.nextCP; }
    static kvControlPoint*& previous(kvControlPoint& cp) { return cp.prevCP; }
    static kvControlPoint* next(const kvControlPoint& cp) { return cp.nextCP; }
    static kvControlPoint* previous(const kvControlPoint& cp) { return cp.prevCP; }
};
