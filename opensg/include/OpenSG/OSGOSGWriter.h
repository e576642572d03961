#pragma once

/// @file
/// Containers as text.

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGFieldContainerPtr.h>

#include <iosfwd>
#include <vector>

namespace osg {

/// Writes containers of any type in OpenSG's ASCII format, with everything that they point at.
///
/// Attachments that are marked internal and internal fields stay out. A container that is pointed
/// at more than once gets a name (`DEF name`) where it is met first, and is referred to (`USE
/// name`) elsewhere; the name is that of the container when it has one that the format allows and
/// that is not taken, else its type and id.
///
/// Numbers are written with as many digits as bring the same bits back, and independently of the
/// locale. Numbers that are not finite become `nan` and `inf`, with one warning: this library reads
/// them, OpenSG's own ASCII reader refuses them. The binding of an attachment has no place in the
/// format: attachments come back at binding 0.
class OSGWriter {
  public:
    /// The stream must outlive the writer. `indentStep`: blanks a level.
    explicit OSGWriter(std::ostream& stream, UInt32 indentStep = 4)
        : _stream(&stream), _indentStep(indentStep) {}

    /// Null is ignored. \return false when the stream takes no more; a line in the log says so.
    bool write(const FieldContainerPtr& container);
    /// All of them in one text; what they share is written once.
    bool write(const std::vector<FieldContainerPtr>& containers);

  private:
    std::ostream* _stream;
    UInt32 _indentStep;
};

} // namespace osg
