// An add-in that does what the environment variable QZ_TEST_ADDIN says: words with blanks between.
//   refuse         the entry routine answers 0
//   version=N      m_version answers N
//   main=N         m_main answers N
//   succeed        the operation copies its input to the result, and its flag is true
//   nothing        the flag is true, but nothing is made
//   garbage        the flag is true, and the result is no surface
//   partial        a result is made, but the flag is false
//   throw          an exception leaves the operation
//   kernel=TEXT    the text, up to the next blank, is said as a kernel's error
//   leak           a stream is left open
//   leak-result    a stream on the result is left open, once it is made
//   arguments      box, distance and what follows it are said as a kernel's error
//   spoil          the input is overwritten
//   interrupt      the user presses Ctrl-C, once the operation is called
//   wait           the sweep goes on until the host says that the user wants to stop

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "SystemApi.h"
#include "platform/Export.h"
#include "platform/HostProgress.h"
#include "platform/QZCore.h"
#include "platform/files.h"

namespace {

constexpr const char* kUnit = "TestAddIn";

std::string Words() {
  const char* words = std::getenv("QZ_TEST_ADDIN");
  return std::string(" ") + (words == nullptr ? "" : words) + " ";
}

bool Is(const char* word) {
  return Words().find(" " + std::string(word) + " ") != std::string::npos;
}

// The text behind "NAME="; empty when the name does not come.
std::string Value(const char* name) {
  const std::string words = Words();
  const std::string mark = " " + std::string(name) + "=";
  const size_t place = words.find(mark);
  if (place == std::string::npos) return "";
  const size_t start = place + mark.size();
  return words.substr(start, words.find(' ', start) - start);
}

int Number(const char* name, int otherwise) {
  const std::string value = Value(name);
  return value.empty() ? otherwise : std::atoi(value.c_str());
}

void WriteText(const std::string& path, const char* mode, const std::string& text) {
  FILE* stream = OpenStdFile(path.c_str(), mode);
  if (stream == nullptr) return;
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fclose(stream);
}

void SayAsKernel(const std::string& text) {
  const char* log = std::getenv("QZ_KERNEL_LOG");
  if (log != nullptr) WriteText(log, "ab", "stage: Testing\nerror: " + text + "\n");
}

// Ends by itself one day, so that a host that never asks to stop fails a test instead of hanging
// it.
void WaitForStop(HostProgress* host) {
  const auto start = std::chrono::steady_clock::now();
  while (!host->IsCancelled()) {
    if (std::chrono::steady_clock::now() - start > std::chrono::seconds(60)) return;
  }
}

void CopyInput(const char* input, const char* output) { CopyFileA(input, output, FALSE); }

// A curves file of one triangle.
void WriteTriangle(const char* /*input*/, const char* output) {
  const std::int32_t counts[] = {3, 3};
  const double points[] = {0, 0, 0, 4, 0, 0, 0, 3, 0};
  const std::int32_t curve[] = {3, 1, 2, 2, 3, 3, 1};
  const auto bytes = [](const auto& values) {
    return std::string(reinterpret_cast<const char*>(values), sizeof values);
  };
  WriteText(output, "wb", "binary curves" + bytes(counts) + bytes(points) + bytes(curve));
}

// What the words make of any operation from one file to another.
void MakeResult(const char* input, const char* output, bool* succeeded,
                void (*make)(const char* input, const char* output) = CopyInput) {
  if (Is("throw")) throw std::runtime_error("thrown by the test");
  if (!Value("kernel").empty()) SayAsKernel(Value("kernel"));
  if (Is("interrupt")) std::raise(SIGINT);
  if (Is("leak")) m_fopen(kUnit, 77, input, "rb");
  if (Is("garbage")) WriteText(output, "wb", "no surface");
  if (Is("succeed") || Is("partial")) make(input, output);
  if (Is("leak-result")) m_fopen(kUnit, 88, output, "rb+");
  if (Is("spoil")) WriteText(input, "wb", "spoilt");
  *succeeded = Is("succeed") || Is("nothing") || Is("garbage");
}

void ShowProgress(HostProgress* host) {
  CString text;
  if (host->LoadMessage(44, &text)) host->ShowProgress(&text, 50);
}

void SayArguments(const double* boxMin, const double* boxMax, double distance, double last) {
  if (!Is("arguments")) return;
  char text[400];
  std::snprintf(text, sizeof text, "box %g %g %g to %g %g %g, distance %g, %g", boxMin[0],
                boxMin[1], boxMin[2], boxMax[0], boxMax[1], boxMax[2], distance, last);
  SayAsKernel(text);
}

void MakeFlaggedResult(const char* input, const char* output, unsigned char* result,
                       void (*make)(const char* input, const char* output)) {
  bool succeeded = false;
  *result = 0;
  MakeResult(input, output, &succeeded, make);
  *result = succeeded ? 1 : 0;
}

}  // namespace

extern "C" {

QZ_EXPORT BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  return reason == DLL_PROCESS_ATTACH && Is("refuse") ? 0 : 1;
}

QZ_EXPORT int m_version() { return Number("version", 1500); }

QZ_EXPORT int m_main() {
  post_args[0][0] = 1;
  return Number("main", 0);
}

QZ_EXPORT void qztutlSweepMultipleToolpathsFromStock(CString workDir, HostProgress* host,
                                                     bool* succeeded) {
  *succeeded = false;
  const CString input = workDir + "StockModelInput.tmp";
  const CString output = workDir + "StockModelOutput.tmp";
  ShowProgress(host);
  if (Is("wait")) WaitForStop(host);
  MakeResult(input, output, succeeded);
}

QZ_EXPORT void qztutlFilterStockByColor(char* input, char* output, unsigned short, unsigned char*,
                                        bool* succeeded) {
  *succeeded = false;
  MakeResult(input, output, succeeded);
}

QZ_EXPORT void qztutl_heal(double, char* input, char* output, bool* succeeded) {
  *succeeded = false;
  MakeResult(input, output, succeeded);
}

QZ_EXPORT void qztutl_silbndy(char* input, char* output, double distance, double* boxMin,
                              double* boxMax, unsigned char* result) {
  SayArguments(boxMin, boxMax, distance, 0);
  MakeFlaggedResult(input, output, result, WriteTriangle);
}

QZ_EXPORT void qztutlSpinSilBndy(const char* input, int mode, const char* output, double distance,
                                 double* boxMin, double* boxMax, unsigned char* result) {
  SayArguments(boxMin, boxMax, distance, mode);
  MakeFlaggedResult(input, output, result, WriteTriangle);
}

QZ_EXPORT void qztutlSphericalOffsetTris(const char* input, const char* output, double distance,
                                         double angle, double* boxMin, double* boxMax,
                                         unsigned char* result) {
  SayArguments(boxMin, boxMax, distance, angle);
  MakeFlaggedResult(input, output, result, CopyInput);
}
}
