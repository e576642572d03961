#pragma once

/// @file
/// Pixels.

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldTable.h>

namespace osg {

class Image;
typedef FCPtr<AttachmentContainerPtr, Image> ImagePtr;
OSG_POINTER_FIELDS(Image, FieldTraitsRecurseMapper)

#define OSG_IMAGE_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                                   \
    LIST(MFFieldContainerPtr, Parents, "parents")                                                  \
    VALUE(SFInt32, Dimension, "dimension")                                                         \
    VALUE(SFInt32, Width, "width")                                                                 \
    VALUE(SFInt32, Height, "height", 1)                                                            \
    VALUE(SFInt32, Depth, "depth", 1)                                                              \
    VALUE(SFInt32, Bpp, "bpp", 1)                                                                  \
    VALUE(SFInt32, MipMapCount, "mipMapCount", 1)                                                  \
    VALUE(SFInt32, FrameCount, "frameCount", 1)                                                    \
    VALUE(SFTime, FrameDelay, "frameDelay")                                                        \
    VALUE(SFUInt32, PixelFormat, "pixelFormat")                                                    \
    LIST(MFUInt8, Pixel, "pixel")                                                                  \
    VALUE(SFInt32, FrameSize, "frameSize")                                                         \
    VALUE(SFString, Name, "name")

OSG_TABLE_BASE(Image, AttachmentContainer, OSG_IMAGE_FIELDS)

/// Pixels, kept as they are read: nothing here looks into them. `bpp` is bytes per pixel, `name`
/// the file that they came from. `parents` are not counted.
class Image : public ImageBase {
    OSG_TABLE_MEMBERS(Image)
};

OSG_TABLE_INLINE(Image)

} // namespace osg
