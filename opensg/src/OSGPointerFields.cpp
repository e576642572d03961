// The fields whose values are pointers to the basic container classes.
#include <OpenSG/OSGAttachmentContainerFields.h>
#include <OpenSG/OSGAttachmentFields.h>
#include <OpenSG/OSGAttachmentMapFields.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGNodeCoreFields.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGSFieldTypeDef.inl>

namespace osg {

DataType FieldDataTraits<FieldContainerPtr>::_type("FieldContainerPtr");
DataType FieldDataTraits<AttachmentPtr>::_type("AttachmentPtr", "FieldContainerPtr");
DataType FieldDataTraits<AttachmentContainerPtr>::_type("AttachmentContainerPtr",
                                                        "FieldContainerPtr");
DataType FieldDataTraits<NodePtr>::_type("NodePtr", "AttachmentContainerPtr");
DataType FieldDataTraits<NodeCorePtr>::_type("NodeCorePtr", "AttachmentContainerPtr");
DataType FieldDataTraits<AttachmentMap>::_type("AttachmentMap");

OSG_DLLEXPORT_SFIELD_DEF1(FieldContainerPtr, );
OSG_DLLEXPORT_MFIELD_DEF1(FieldContainerPtr, );
OSG_DLLEXPORT_SFIELD_DEF1(AttachmentPtr, );
OSG_DLLEXPORT_MFIELD_DEF1(AttachmentPtr, );
OSG_DLLEXPORT_SFIELD_DEF1(AttachmentContainerPtr, );
OSG_DLLEXPORT_MFIELD_DEF1(AttachmentContainerPtr, );
OSG_DLLEXPORT_SFIELD_DEF1(NodePtr, );
OSG_DLLEXPORT_MFIELD_DEF1(NodePtr, );
OSG_DLLEXPORT_SFIELD_DEF1(NodeCorePtr, );
OSG_DLLEXPORT_MFIELD_DEF1(NodeCorePtr, );
OSG_DLLEXPORT_SFIELD_DEF1(AttachmentMap, );

FieldContainerPtr detail::readPointer(BinaryDataHandler& handler, const DataType& contentType) {
    UInt32 id = 0;
    handler.getValue(id);
    const FieldContainerFactory& factory = *FieldContainerFactory::the();
    const FieldContainerPtr container = factory.getMappedContainer(id);
    const FieldContainerType* const pointed = factory.findPointedType(contentType);
    if (container == NullFC || pointed == nullptr || !container->getType().isDerivedFrom(*pointed))
        return NullFC;
    return container;
}

UInt32 FieldDataTraits<AttachmentMap>::getBinSize(const AttachmentMap& map) {
    constexpr UInt32 perEntry = static_cast<UInt32>(sizeof(UInt16) + sizeof(UInt32));
    return static_cast<UInt32>(sizeof(UInt32) + perEntry * map.size());
}

void FieldDataTraits<AttachmentMap>::copyToBin(BinaryDataHandler& handler,
                                               const AttachmentMap& map) {
    handler.putValue(static_cast<UInt32>(map.size()));
    for (const auto& entry : map) {
        handler.putValue(static_cast<UInt16>(entry.first & 0xFFFFu));
        FieldDataTraits<AttachmentPtr>::copyToBin(handler, entry.second);
    }
}

void FieldDataTraits<AttachmentMap>::copyFromBin(BinaryDataHandler& handler, AttachmentMap& map) {
    map.clear();
    UInt32 count = 0;
    handler.getValue(count);
    for (UInt32 i = 0; i < count; ++i) {
        UInt16 binding = 0;
        AttachmentPtr attachment;
        handler.getValue(binding);
        FieldDataTraits<AttachmentPtr>::copyFromBin(handler, attachment);
        // Group numbers differ from program to program, so they are not in the stream.
        if (attachment != NullFC)
            map[UInt32(attachment->getGroupId()) << 16 | binding] = attachment;
    }
}

} // namespace osg
