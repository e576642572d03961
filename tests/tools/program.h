#pragma once

#include <string>

namespace kv::test {

struct Outcome {
    int code = -1;
    std::string out;
    std::string error;
};

/// Runs kvanim with the arguments, as a shell would split them, in a folder of its own that is
/// removed when the test ends.
class Program {
  public:
    Program();
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Outcome run(const std::string& arguments, const std::string& before = "") const;
    std::string path(const std::string& name) const { return _folder + "/" + name; }
    bool exists(const std::string& name) const;
    std::string read(const std::string& name) const;
    void write(const std::string& name, const std::string& text) const;
    /// Files in the folder, hidden ones included.
    int fileCount() const;

    /// A walker of two joints over four frames at 100 frames a second.
    void writeModel(const std::string& name) const;

  private:
    std::string _folder;
};

/// Lines of text, the last one with or without a line end.
int lineCount(const std::string& text);

} // namespace kv::test
