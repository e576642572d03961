// The program that is run anew for each measurement. Prints one number.
//
//   kv_bench_fresh insert N         N keys inserted in ascending order into one curve; ns a key
//   kv_bench_fresh insertRandom N   the same in random order
//   kv_bench_fresh insertLiteral N  the same into the plain list that the tests compare with
//   kv_bench_fresh moveKeys N K     K calls of moveCPTo that keep the order, on N keys; ns
//   kv_bench_fresh deleteKeys N     every second of N keys deleted as selected; ns a key
//   kv_bench_fresh retangent N      all N keys given another type of tangent; ns a key
//   kv_bench_fresh ids N            N identifiers; ns each
//   kv_bench_fresh addCurve N       N curves registered and added to a block; ns a curve
//   kv_bench_fresh importKeys N     N ascending keys of one stored curve read; ns a key
//   kv_bench_fresh importCurves N   N stored curves of one block read; ns a curve
//   kv_bench_fresh importBlocks N   N stored blocks of one node read; ns a block
//   kv_bench_fresh addBlock N       N blocks added to one clip; ns a block
//   kv_bench_fresh exportClip N     a clip of N blocks exported to the root; ns a block
//   kv_bench_fresh importClip N     the same clip imported again; ns a block
//   kv_bench_fresh makeScene N FILE a scene of N keys written to FILE; the number of its keys
//   kv_bench_fresh read FILE        the scene read from FILE; milliseconds
//   kv_bench_fresh toManager FILE   the blocks of that scene read into the manager; milliseconds
//   kv_bench_fresh containerBytes FILE  heap in use after reading the file, a key; bytes
//   kv_bench_fresh managerBytes FILE    the same after reading the blocks, a key; bytes
//   kv_bench_fresh write FILE       the scene of FILE written again; milliseconds
//   kv_bench_fresh getline FILE     std::getline over FILE; milliseconds
//   kv_bench_fresh fprintf FILE     the numbers of the keys of FILE printed with fprintf; ms
#include "fresh.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc < 2 || !osg::osgInit(0, nullptr)) return 2;
    const std::string wanted = argv[1];
    const kv::bench::Words arguments(argv + 2, argv + argc);
    for (const auto& topic : {kv::bench::keyMeasurements(), kv::bench::clipMeasurements(),
                              kv::bench::fileMeasurements()}) {
        for (const kv::bench::Measurement& measurement : topic) {
            if (measurement.name != wanted || measurement.arguments != arguments.size()) continue;
            std::printf("%.6g\n", measurement.run(arguments));
            std::fflush(stdout);
            std::_Exit(0); // the scene's destruction is not what is measured
        }
    }
    return 2;
}
