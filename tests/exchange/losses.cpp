// Tells what differs between two texts with one thing a line.
#include "exchange/losses.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <set>
#include <sstream>
#include <vector>

namespace exchange {
namespace {

/// Half a unit in the seventh digit, twice: numbers are rounded when they are written, and those
/// that are computed from others once more.
constexpr double kSevenDigits = 1.2e-6;

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

/// A word as a number, with what punctuation is behind it.
bool numberOf(const std::string& word, double& number, std::string& behind) {
    const std::size_t start = word.find_first_not_of('[');
    if (start == std::string::npos || word[start] == '#') return false;
    char* end = nullptr;
    number = std::strtod(word.c_str() + start, &end);
    behind = word.substr(0, start) + '|' + end;
    return end != word.c_str() + start &&
           std::string(end).find_first_not_of(",])") == std::string::npos;
}

/// Whether two lines differ in the last digits of their numbers only. The greatest number of a line
/// counts, since the small ones of a matrix come out of the great ones.
bool differInDigitsOnly(const std::string& a, const std::string& b) {
    const std::vector<std::string> left = wordsOf(a), right = wordsOf(b);
    if (left.size() != right.size()) return false;
    double greatest = 0.0, difference = 0.0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        double x = 0.0, y = 0.0;
        std::string behindX, behindY;
        const bool numbers = numberOf(left[i], x, behindX) && numberOf(right[i], y, behindY);
        if (!numbers || behindX != behindY) {
            if (left[i] != right[i]) return false;
            continue;
        }
        greatest = (std::max)({greatest, std::fabs(x), std::fabs(y)});
        if (x != y) difference = (std::max)(difference, std::fabs(x - y));
    }
    return difference <= kSevenDigits * greatest;
}

std::string withoutBlanks(std::string line) {
    for (const char* blank : {"\\x09", "\\x0a", "\\x0d"})
        for (std::size_t at = line.find(blank); at != std::string::npos; at = line.find(blank))
            line.replace(at, 4, " ");
    line.erase(
        std::unique(line.begin(), line.end(), [](char a, char b) { return a == ' ' && b == ' '; }),
        line.end());
    return line;
}

/// Matrices are computed from what is stored, by each scene graph for itself.
bool isComputed(const std::string& line) {
    const std::vector<std::string> words = wordsOf(line);
    return !words.empty() && (words[0] == "matrix" || words[0] == "world");
}

const char* lossBetween(const std::string& before, const std::string& after) {
    if (differInDigitsOnly(before, after)) return isComputed(before) ? "rounding" : "digits";
    const bool texts =
        before.find('"') != std::string::npos || after.find('"') != std::string::npos;
    if (!texts) return "values";
    return withoutBlanks(before) == withoutBlanks(after) ? "blanks" : "texts";
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

/// Indentation and first word: what a line is about.
std::string subjectOf(const std::string& line) {
    return line.substr(0, line.find(' ', line.find_first_not_of(' ')));
}

} // namespace

std::string lossesBetween(const std::string& before, const std::string& after) {
    const std::vector<std::string> left = linesOf(before), right = linesOf(after);
    std::set<std::string> losses;
    if (left.size() != right.size()) losses.insert("records");
    for (std::size_t i = 0; i < left.size() && losses.count("records") == 0; ++i) {
        if (left[i] == right[i]) continue;
        if (subjectOf(left[i]) != subjectOf(right[i]))
            losses = {"records"};
        else
            losses.insert(lossBetween(left[i], right[i]));
    }
    std::string text;
    for (const std::string& loss : losses)
        text += (text.empty() ? "" : ",") + loss;
    return text.empty() ? "none" : text;
}

} // namespace exchange
