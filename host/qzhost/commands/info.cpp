#include <cstdio>
#include <memory>
#include <string>

#include "formats/FileError.h"
#include "host/files/DescribeFile.h"
#include "host/files/DescribeJob.h"
#include "host/files/DescriptionText.h"
#include "host/files/FileKind.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/Report.h"
#include "host/qzhost/commands/commands.h"

namespace host {

namespace {

void AddText(Report& report, const nlohmann::ordered_json& description, const Options& options) {
  for (const std::string& line : DescriptionText(description, UnitsName(options.units))) {
    report.AddLine(line);
  }
}

int InfoOnFile(const std::string& path, const Options& options) {
  const nlohmann::ordered_json description = DescribeFile(path);
  if (description["kind"] == NameOf(FileKind::kOther)) {
    throw CommandError(path + ": none of the files that a job is made of");
  }
  Report report(options);
  report.Add("command", "info");
  report.Add("exit_code", static_cast<int>(kSuccess));
  AddText(report, description, options);
  report.Add("files", nlohmann::ordered_json::array({description}));
  report.Print();
  return kSuccess;
}

// Files that take part in the job and cannot be read.
size_t CountErrors(const nlohmann::ordered_json& files) {
  size_t errors = 0;
  for (const auto& file : files) {
    if (file.contains("error") && file["stale"] == false) ++errors;
  }
  return errors;
}

int InfoOnJob(const std::string& path, const Options& options) {
  const nlohmann::ordered_json job = DescribeJob(path);
  const size_t errors = CountErrors(job["files"]);
  const ExitCode code = errors == 0 ? kSuccess : kBadInput;
  Report report(options);
  report.Add("command", "info");
  report.Add("exit_code", static_cast<int>(code));
  report.Add("job", job["job"], "job", job["job"].get<std::string>());
  report.Add("paths", job["paths"], "paths");
  for (const auto& file : job["files"]) AddText(report, file, options);
  report.Add("files", job["files"]);
  report.Print();
  if (errors > 0) {
    std::fprintf(stderr, "qzhost: %s: files that cannot be read: %s\n", path.c_str(),
                 std::to_string(errors).c_str());
  }
  return code;
}

}  // namespace

void AddInfoCommand(CLI::App& app, Options& options) {
  auto* command = app.add_subcommand("info", "Say what is in a file or in a job's directory");
  const auto path = std::make_shared<std::string>();
  command
      ->add_option("FILE", *path, "A file of a job, a mesh, a file of curves, or a job's directory")
      ->required();
  command->callback([path, &options] {
    options.run = [path, &options] {
      return IsDirectory(*path) ? InfoOnJob(*path, options) : InfoOnFile(*path, options);
    };
  });
}

}  // namespace host
