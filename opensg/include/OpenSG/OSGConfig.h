#pragma once

/// @file
/// Namespace and version macros. Include this header first in every file that uses the scene graph.
///
/// The interface is that of OpenSG 1.8: code written against these headers also compiles against an
/// installed OpenSG 1.x.

/// Another spelling of the namespace: `OSG::Node` and `osg::Node` are the same class.
#define OSG osg

#define OSG_BEGIN_NAMESPACE namespace osg {
#define OSG_END_NAMESPACE }

/// Written without a semicolon after it; works before any other header declared the namespace.
#define OSG_USING_NAMESPACE                                                                        \
    namespace osg {}                                                                               \
    using namespace osg;

#define OSG_MAJOR_VERSION 1
#define OSG_MINOR_VERSION 8
#define OSG_RELEASE_VERSION 1
#define OSG_VERSION 0x010801
#define OSG_VERSION_STRING "1.8.1"

// Where OpenSG marks what a Windows DLL exports. Nothing here needs marking.
#define OSG_BASE_DLLMAPPING
#define OSG_SYSTEMLIB_DLLMAPPING
#define OSG_DLL_IMPORT
#define OSG_DLL_EXPORT
