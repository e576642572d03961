// The documentation keeps its word: every piece of C++ in it is compiled, every link leads
// somewhere, and the front page fits on a screen.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path kTop = KV_SOURCE_TOP;

std::vector<std::string> linesOf(const fs::path& file) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::vector<fs::path> filesBelow(const fs::path& folder, const std::string& extension) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == extension) found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

/// Every page of the project, those of the folders that builds and demos fill left out.
std::vector<fs::path> pages() {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(kTop))
        if (entry.path().extension() == ".md") found.push_back(entry.path());
    for (const char* folder : {"docs", "examples", "host", "opensg", "tools", "tests"})
        for (const fs::path& page : filesBelow(kTop / folder, ".md"))
            found.push_back(page);
    return found;
}

/// The lines with the indentation that they share taken off.
std::string withoutIndent(const std::vector<std::string>& lines) {
    std::size_t indent = std::string::npos;
    for (const std::string& line : lines)
        indent = (std::min)(indent, line.find_first_not_of(' '));
    std::string text;
    for (const std::string& line : lines)
        text += (line.empty() ? line : line.substr(indent)) + '\n';
    return text;
}

/// The texts between two equal markers `//! [name]` in the sources that the build compiles.
std::set<std::string> snippets() {
    std::set<std::string> found;
    std::vector<fs::path> sources = filesBelow(kTop / "docs/snippets", ".cpp");
    for (const fs::path& source : filesBelow(kTop / "examples", ".cpp"))
        sources.push_back(source);
    for (const fs::path& source : sources) {
        std::string open;
        std::vector<std::string> lines;
        for (const std::string& line : linesOf(source)) {
            const std::size_t mark = line.find("//! [");
            if (mark == std::string::npos) {
                if (!open.empty()) lines.push_back(line);
                continue;
            }
            const std::string name = line.substr(mark);
            if (open.empty()) {
                open = name;
                continue;
            }
            EXPECT_EQ(open, name) << source << ": a snippet ends under another name";
            found.insert(withoutIndent(lines));
            open.clear();
            lines.clear();
        }
        EXPECT_EQ(open, "") << source << ": a snippet does not end";
    }
    return found;
}

/// The blocks of C++ on a page.
std::vector<std::string> codeOn(const fs::path& page) {
    std::vector<std::string> found;
    std::vector<std::string> lines;
    bool inside = false;
    for (const std::string& line : linesOf(page)) {
        if (inside && line == "```") {
            found.push_back(withoutIndent(lines));
            lines.clear();
            inside = false;
        } else if (inside) {
            lines.push_back(line);
        } else {
            inside = line == "```cpp";
        }
    }
    return found;
}

/// The name under which a heading is linked to: lower case, blanks to dashes, no punctuation.
std::string anchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto letter = static_cast<unsigned char>(c);
        if (std::isalnum(letter) || c == '-' || c == '_')
            anchor += static_cast<char>(std::tolower(letter));
        else if (c == ' ')
            anchor += '-';
    }
    return anchor;
}

bool hasHeading(const fs::path& page, const std::string& anchor) {
    const std::vector<std::string> lines = linesOf(page);
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
        const std::size_t text = line.find_first_not_of('#');
        return text != 0 && text != std::string::npos && anchorOf(line.substr(text + 1)) == anchor;
    });
}

} // namespace

TEST(Documentation, everyPieceOfCodeIsASnippetThatIsCompiled) {
    const std::set<std::string> known = snippets();
    std::size_t pieces = 0;
    for (const fs::path& page : pages()) {
        for (const std::string& code : codeOn(page)) {
            ++pieces;
            EXPECT_TRUE(known.count(code) == 1) << page << " has code that is no snippet:\n"
                                                << code;
        }
    }
    EXPECT_GT(pieces, 10U);
}

TEST(Documentation, everySnippetIsQuoted) {
    std::set<std::string> quoted;
    for (const fs::path& page : pages())
        for (const std::string& code : codeOn(page))
            quoted.insert(code);
    for (const std::string& snippet : snippets())
        EXPECT_EQ(quoted.count(snippet), 1U) << "no page quotes:\n" << snippet;
}

TEST(Documentation, everyRelativeLinkLeadsToAFileAndAHeading) {
    const std::regex link(R"(\]\(([^)#: ]*)(#([^) ]*))?\))");
    std::size_t links = 0;
    for (const fs::path& page : pages()) {
        for (const std::string& line : linesOf(page)) {
            for (std::sregex_iterator it(line.begin(), line.end(), link), end; it != end; ++it) {
                const std::string file = (*it)[1], anchor = (*it)[3];
                const fs::path target = file.empty() ? page : page.parent_path() / file;
                ++links;
                EXPECT_TRUE(fs::exists(target)) << page << " links to " << file;
                if (!anchor.empty()) {
                    EXPECT_TRUE(hasHeading(target, anchor)) << page << " links to #" << anchor;
                }
            }
        }
    }
    EXPECT_GT(links, 10U);
}

TEST(Documentation, theFrontPageFitsOnAScreenBeforeItsDetails) {
    std::size_t height = 0;
    for (const std::string& line : linesOf(kTop / "README.md")) {
        if (line.rfind("## ", 0) == 0) break;
        ++height;
    }
    EXPECT_LE(height, 40U);
}
