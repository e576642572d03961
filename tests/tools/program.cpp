// Runs the program as a user does: through a shell, with its output in files.
#include "tools/program.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace kv::test {

Program::Program() {
    std::string name = (fs::temp_directory_path() / "kvanim-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    _folder = name;
}

Program::~Program() {
    std::error_code ignored;
    fs::remove_all(_folder, ignored);
}

Outcome Program::run(const std::string& arguments, const std::string& before) const {
    const std::string outFile = _folder + ".out", errorFile = _folder + ".err";
    const std::string command = "cd '" + _folder + "' && " + before +
                                " LSAN_OPTIONS=suppressions='" KV_LEAKS_OF_OTHERS
                                "':print_suppressions=0 '" KV_KVANIM "' " +
                                arguments + " > '" + outFile + "' 2> '" + errorFile +
                                "' < /dev/null";
    const int status = std::system(command.c_str());
    Outcome outcome;
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    const auto slurp = [](const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        fs::remove(file);
        return text;
    };
    outcome.out = slurp(outFile);
    outcome.error = slurp(errorFile);
    return outcome;
}

bool Program::exists(const std::string& name) const {
    return fs::exists(path(name));
}

std::string Program::read(const std::string& name) const {
    std::ifstream in(path(name), std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void Program::write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary) << text;
}

int Program::fileCount() const {
    return static_cast<int>(
        std::distance(fs::directory_iterator(_folder), fs::directory_iterator()));
}

void Program::writeModel(const std::string& name) const {
    write(name,
          "HIERARCHY\nROOT Hips\n{\n  OFFSET 0 0 0\n"
          "  CHANNELS 6 Xposition Yposition Zposition Zrotation Yrotation Xrotation\n"
          "  JOINT Knee\n  {\n    OFFSET 1 -2 0\n    CHANNELS 3 Zrotation Yrotation Xrotation\n"
          "    End Site\n    {\n      OFFSET 0 -3 0\n    }\n  }\n}\n"
          "MOTION\nFrames: 4\nFrame Time: 0.01\n"
          "0 10 0 0 0 0 170 0 0\n"
          "1 10 0 0 0 10 179 0 0\n"
          "2 10 0 0 0 20 -172 0 0\n"
          "4 10 0 0 0 40 -160 0 0\n");
}

int lineCount(const std::string& text) {
    const auto ends = std::count(text.begin(), text.end(), '\n');
    return static_cast<int>(ends) + (text.empty() || text.back() == '\n' ? 0 : 1);
}

} // namespace kv::test
