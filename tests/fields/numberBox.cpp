#include "fields/numberBox.h"

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(NumberBox, NodeCore, KV_NUMBER_BOX_FIELDS)

std::vector<NumberBox::Edit>& NumberBox::edits() {
    static std::vector<Edit> all;
    return all;
}

void NumberBox::changed(BitVector which, UInt32 origin) {
    countRead(which, origin);
    edits().push_back({which, origin});
    Inherited::changed(which, origin);
}

OSG_END_NAMESPACE
