// The types of the containers that the tests of scene files use.

#include "opensg/embedded/fileContainers.h"

#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>

namespace osg {

OSG_POINTER_FIELDS_DEF(FileItem, FieldContainer)
OSG_POINTER_FIELDS_DEF(FileSheet, Attachment)
OSG_TABLE_DEF(FileItem, FieldContainer, OSG_FILE_ITEM_FIELDS)
OSG_TABLE_DEF(FileSheet, Attachment, OSG_FILE_SHEET_FIELDS)
OSG_TABLE_DEF(FileValues, Attachment, OSG_FILE_VALUES_FIELDS)

} // namespace osg
