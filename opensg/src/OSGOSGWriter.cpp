// Containers of any type as text.

#include "files/sceneFiles.h"

#include <OpenSG/OSGOSGWriter.h>

namespace osg {

bool OSGWriter::write(const FieldContainerPtr& container) {
    return write(std::vector<FieldContainerPtr>{container});
}

bool OSGWriter::write(const std::vector<FieldContainerPtr>& containers) {
    const std::unique_ptr<files::ByteSink> sink = files::makeStreamSink(*_stream);
    return files::writeAscii(containers, *sink, _indentStep, "the stream");
}

} // namespace osg
