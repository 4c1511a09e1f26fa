#pragma once

// One file a subcommand. Each registers itself on the application: its name, its help, its own
// options (kept in a std::shared_ptr<Settings> that the callback captures), and a callback that
// sets Options::run to a function that does the work and returns an exit code. The work starts only
// when the whole command line has been understood; it reports with Report and fails by throwing
// CommandError or formats::FileError.

#include <CLI/CLI.hpp>

#include "host/qzhost/Options.h"

namespace host {

void AddCompareCommand(CLI::App& app, Options& options);
void AddCompressCommand(CLI::App& app, Options& options);
void AddConvertCommand(CLI::App& app, Options& options);
void AddFilterCommand(CLI::App& app, Options& options);
void AddHealCommand(CLI::App& app, Options& options);
void AddInfoCommand(CLI::App& app, Options& options);
void AddNewJobCommand(CLI::App& app, Options& options);
void AddOffsetCommand(CLI::App& app, Options& options);
void AddSilhouetteCommand(CLI::App& app, Options& options);
void AddSpinSilhouetteCommand(CLI::App& app, Options& options);
void AddSweepCommand(CLI::App& app, Options& options);

}  // namespace host
