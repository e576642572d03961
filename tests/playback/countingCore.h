#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGReal32Fields.h>

#include <OSGContainerTable.h>

OSG_BEGIN_NAMESPACE

class CountingCore;
typedef FCPtr<NodeCorePtr, CountingCore> CountingCorePtr;

#define KV_COUNTING_CORE_FIELDS(VALUE, VALUES, POINTER, LIST) VALUE(SFReal32, Amount, "amount")

/// A core with one number that counts how many edits of it have ended.
class CountingCore : public NodeCore {
    KV_REACTING_CONTAINER_DECL(CountingCore, NodeCore, KV_COUNTING_CORE_FIELDS, KV_ROW_NOTHING)

    int edits = 0;
};

KV_CONTAINER_INLINE(CountingCore)

OSG_END_NAMESPACE
