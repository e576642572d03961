// The types of the containers that the tests of scene files use.
#include "opensg/fileContainers.h"

#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>

OSG_BEGIN_NAMESPACE

KV_POINTER_FIELD_DEF(FileItem, "FieldContainerPtr")
KV_CONTAINER_DEF(FileItem, FieldContainer, TEST_FILE_ITEM_FIELDS)
KV_CONTAINER_DEF(FileSheet, Attachment, TEST_FILE_SHEET_FIELDS)
KV_CONTAINER_DEF(FileValues, Attachment, TEST_FILE_VALUES_FIELDS)
KV_CONTAINER_DEF(FileRareValues, Attachment, TEST_FILE_RARE_VALUES_FIELDS)

OSG_END_NAMESPACE
