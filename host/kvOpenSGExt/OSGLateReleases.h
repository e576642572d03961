#pragma once

/// @file
/// References that a container gives up while it is destroyed.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerPtr.h>

#include "kvOpenSGExtApi.h"

OSG_BEGIN_NAMESPACE

namespace kvtable {

/// Collects the references that a container gives up in its `onDestroy`. Only the first container
/// of a chain of destructions releases anything, one reference after the other at the end of its
/// collection's life; what is destroyed thereby adds its own references to the collection.
/// Containers that are nested however deep are thus destroyed without recursion, and all of them
/// when the first `onDestroy` returns. One chain a thread.
class KV_OPENSG_EXT_API LateReleases {
  public:
    LateReleases();
    /// Releases what was collected, unless an outer collection does so.
    ~LateReleases();
    LateReleases(const LateReleases&) = delete;
    LateReleases& operator=(const LateReleases&) = delete;

    /// Takes the reference over; null is ignored. The field that held it must have dropped it.
    static void add(const FieldContainerPtr& container);

  private:
    bool _isOutermost;
};

} // namespace kvtable

OSG_END_NAMESPACE
