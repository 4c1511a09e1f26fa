#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <new>
#include <nlohmann/json.hpp>
#include <string>

#include "host/QZCore/HostControl.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostPaths.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/NumberChecks.h"
#include "host/qzhost/Options.h"
#include "host/qzhost/Report.h"
#include "host/qzhost/StatusBar.h"
#include "host/qzhost/commands/commands.h"

namespace {

using host::Options;

// Figures for the sort of tolerance a CAM host works with when nobody sets one.
constexpr double kToleranceInMillimetres = 0.01;
constexpr double kToleranceInInches = 0.0004;

void AddGlobalOptions(CLI::App& app, Options& options) {
  app.set_version_flag("--version", std::string("qzhost ") + QZ_VERSION);
  const auto setUnits = [&options](const std::string& name) {
    options.units = name == "inch" ? host::Units::kInches : host::Units::kMillimetres;
  };
  app.add_option_function<std::string>("--units", setUnits,
                                       "Length units of every file and figure (mm)")
      ->transform(CLI::IsMember({"mm", "inch"}, CLI::ignore_case))
      ->option_text("mm|inch");
  app.add_option("--host-tolerance", options.hostTolerance, "The host's tolerance, in length units")
      ->check(host::NumberAboveZero());
  app.add_option("--stock-data-dir", options.stockDataDirectory,
                 "Directory for the diagnostic copies instead of the job's own");
  app.add_option("--addin", options.addIn, "The add-in library instead of the one beside qzhost");
  app.add_flag("--json", options.json, "One JSON object on standard output, for machines");
  app.add_flag("--quiet", options.quiet, "No progress");
}

void ApplyToHost(const Options& options) {
  const bool metric = options.units == host::Units::kMillimetres;
  SetHostMetric(metric);
  SetHostTolerance(
      options.hostTolerance.value_or(metric ? kToleranceInMillimetres : kToleranceInInches));
  host::MuteStatus(options.quiet);
  const std::string& copies = options.stockDataDirectory;
  if (copies.empty()) return;
  // The add-in makes no copies at all where it finds no directory, and says nothing of it.
  if (!host::IsDirectory(copies)) {
    throw host::CommandError(copies + ": there is no such directory");
  }
  // The full path, since some copies are made while the job's directory is the current one.
  OverrideStockDataDirectory(host::AddInDirectory(copies).c_str());
}

int Fail(const Options& options, const std::string& message, int exitCode) {
  std::fprintf(stderr, "qzhost: %s\n", message.c_str());
  if (options.json) {
    const nlohmann::ordered_json object = {{"exit_code", exitCode}, {"reason", message}};
    std::printf("%s", host::JsonText(object).c_str());
  }
  return exitCode;
}

int Run(const Options& options) {
  try {
    ApplyToHost(options);
    return options.run();
  } catch (const host::CommandError& error) {
    return Fail(options, error.what(), error.Code());
  } catch (const std::bad_alloc&) {
    return Fail(options, "not enough memory", host::kFailed);
  } catch (const std::exception& error) {
    return Fail(options, error.what(), host::kBadInput);
  }
}

int Parse(CLI::App& app, Options& options, int argc, char** argv) {
  try {
    app.parse(argc, argv);
    return host::kSuccess;
  } catch (const CLI::Success& asked) {
    app.exit(asked);
    // Help and version are the whole answer.
    options.run = [] { return host::kSuccess; };
    return host::kSuccess;
  } catch (const CLI::ParseError& error) {
    return Fail(options, std::string(error.what()) + " (try --help)", host::kBadInput);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app{"Runs the stock-model operations of the QZTUtlA add-in.", "qzhost"};
  app.footer(
      "qzhost --help lists the options that every subcommand takes, qzhost SUBCOMMAND --help\n"
      "those of its own.");
  app.require_subcommand(0, 1);
  app.fallthrough();
  // A path may begin with a slash on every system.
  app.allow_windows_style_options(false);
  AddGlobalOptions(app, options);
  host::AddCompareCommand(app, options);
  host::AddCompressCommand(app, options);
  host::AddConvertCommand(app, options);
  host::AddFilterCommand(app, options);
  host::AddHealCommand(app, options);
  host::AddInfoCommand(app, options);
  host::AddNewJobCommand(app, options);
  host::AddOffsetCommand(app, options);
  host::AddSilhouetteCommand(app, options);
  host::AddSpinSilhouetteCommand(app, options);
  host::AddSweepCommand(app, options);
  const int exitCode = Parse(app, options, argc, argv);
  if (exitCode != host::kSuccess) return exitCode;
  // Not left to the parser, which would name this before an argument that it does not know.
  if (!options.run) return Fail(options, "a subcommand is required (try --help)", host::kBadInput);
  return Run(options);
}
