# Finds an installed OpenSG 1.x: headers, OSGBase and OSGSystem. Set OpenSG_ROOT to its prefix.
#
# Defines the target OpenSG::OpenSG. The headers are taken as system headers (they do not compile
# without warnings), and _OSG_HAVE_CONFIGURED_H_ is set when the installation has OSGConfigured.h, so
# that the same options hold as when the library was built.

find_path(OpenSG_INCLUDE_DIR OpenSG/OSGConfig.h)
find_library(OpenSG_BASE_LIBRARY OSGBase)
find_library(OpenSG_SYSTEM_LIBRARY OSGSystem)

set(OpenSG_VERSION)
if(OpenSG_INCLUDE_DIR)
    foreach(header OSGConfigured.h OSGBaseFunctions.h OSGConfig.h OSGVersion.h)
        if(NOT OpenSG_VERSION AND EXISTS "${OpenSG_INCLUDE_DIR}/OpenSG/${header}")
            file(STRINGS "${OpenSG_INCLUDE_DIR}/OpenSG/${header}" version_line
                 REGEX "define[ \t]+OSG_VERSION_STRING[ \t]")
            string(REGEX MATCH "[0-9]+\\.[0-9]+(\\.[0-9]+)?" OpenSG_VERSION "${version_line}")
        endif()
    endforeach()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenSG
    REQUIRED_VARS OpenSG_INCLUDE_DIR OpenSG_BASE_LIBRARY OpenSG_SYSTEM_LIBRARY
    VERSION_VAR OpenSG_VERSION
    REASON_FAILURE_MESSAGE
        "Set OpenSG_ROOT to the prefix of an OpenSG 1.x installation (include/OpenSG/OSGConfig.h, libOSGBase, libOSGSystem), or build with -DKV_OPENSG=embedded")

if(OpenSG_FOUND AND OpenSG_VERSION AND NOT OpenSG_VERSION VERSION_LESS 2)
    message(FATAL_ERROR "OpenSG ${OpenSG_VERSION} in ${OpenSG_INCLUDE_DIR} is not OpenSG 1.x: "
                        "its interface is another one.")
endif()

if(OpenSG_FOUND AND NOT TARGET OpenSG::OpenSG)
    add_library(OpenSG::Base UNKNOWN IMPORTED)
    set_target_properties(OpenSG::Base PROPERTIES IMPORTED_LOCATION "${OpenSG_BASE_LIBRARY}")
    add_library(OpenSG::OpenSG UNKNOWN IMPORTED)
    set_target_properties(OpenSG::OpenSG PROPERTIES
        IMPORTED_LOCATION "${OpenSG_SYSTEM_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${OpenSG_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES OpenSG::Base
        # A header of the C++ library that OpenSG's headers pull in announces its age.
        INTERFACE_COMPILE_OPTIONS "$<$<NOT:$<CXX_COMPILER_ID:MSVC>>:-Wno-deprecated>")
    if(EXISTS "${OpenSG_INCLUDE_DIR}/OpenSG/OSGConfigured.h")
        set_property(TARGET OpenSG::OpenSG PROPERTY
            INTERFACE_COMPILE_DEFINITIONS _OSG_HAVE_CONFIGURED_H_)
    endif()
endif()
mark_as_advanced(OpenSG_INCLUDE_DIR OpenSG_BASE_LIBRARY OpenSG_SYSTEM_LIBRARY)
