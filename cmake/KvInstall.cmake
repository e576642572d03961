# Installation and the CMake package that consumers find as kvOpenSGAnimations.
