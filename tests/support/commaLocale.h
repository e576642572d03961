#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace kvtest {

/// While it lives, numbers have a decimal comma and points between thousands: in every C++ stream
/// that is made, and, where the machine has such a locale, in the C library.
class CommaLocale {
  public:
    CommaLocale()
        : _before(std::setlocale(LC_ALL, nullptr)),
          _streams(std::locale::global(std::locale(std::locale(), new Punctuation))) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"}) {
            _installed = std::setlocale(LC_ALL, name) != nullptr;
            if (_installed) break;
        }
    }
    ~CommaLocale() {
        std::locale::global(_streams);
        std::setlocale(LC_ALL, _before.c_str());
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// Whether the C library has the comma, too.
    bool isInstalled() const { return _installed; }

  private:
    struct Punctuation : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::string _before;
    std::locale _streams;
    bool _installed = false;
};

} // namespace kvtest
