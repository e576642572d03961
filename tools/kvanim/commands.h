#pragma once

#include <CLI/CLI.hpp>

namespace kvanim {

/// Each adds its subcommand to the program; the subcommand runs when the command line has been
/// parsed.
void addImport(CLI::App& program);
void addInfo(CLI::App& program);
void addEval(CLI::App& program);
void addPlay(CLI::App& program);
void addPlot(CLI::App& program);
void addDump(CLI::App& program);
void addCheck(CLI::App& program);
void addFields(CLI::App& program);
void addConvert(CLI::App& program);

} // namespace kvanim
