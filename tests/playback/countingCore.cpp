// A core that tells how often it was written.

#include "playback/countingCore.h"

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(CountingCore, NodeCore, KV_COUNTING_CORE_FIELDS)

void CountingCore::changed(BitVector which, UInt32 origin) {
    if (which & AmountFieldMask) ++edits;
    countRead(which, origin);
    Inherited::changed(which, origin);
}

OSG_END_NAMESPACE
