// The type of the container with a hidden field; only the embedded scene graph has the tables that
// it is made from.

#include "opensg/embedded/fileContainers.h"

namespace osg {

OSG_TABLE_DEF(FileSecret, FieldContainer, OSG_FILE_SECRET_FIELDS)

} // namespace osg
