// Start and end of the library.
#include "OSGSceneClasses.h"

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGLog.h>

#include <cstdlib>

namespace osg {

SystemState GlobalSystemState = Startup;

namespace {

void exitAtEndOfProgram() {
    osgExit();
}

} // namespace

bool osgInit(Int32, Char8**, UInt16 major, UInt16 minor, UInt16) {
    if (GlobalSystemState == Running) return true;
    if (GlobalSystemState == Shutdown) {
        SFATAL << "osgInit is called after osgExit" << std::endl;
        std::abort();
    }
    if (major != OSG_MAJOR_VERSION || minor != OSG_MINOR_VERSION) {
        SFATAL << "the program was compiled for version " << major << "." << minor
               << ", the library is version " << OSG_MAJOR_VERSION << "." << OSG_MINOR_VERSION
               << std::endl;
        return false;
    }
    if (!detail::linkSceneClasses()) return false;
    GlobalSystemState = Running;
    FieldContainerFactory::the()->initializePending();
    std::atexit(&exitAtEndOfProgram);
    return true;
}

bool osgExit() {
    if (GlobalSystemState != Running) return false;
    GlobalSystemState = Shutdown;
    FieldContainerFactory::the()->terminate();
    return true;
}

} // namespace osg
