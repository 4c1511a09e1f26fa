#include "faults/StockModel.h"

#include "faults/Answer.h"
#include "support/TempDirectory.h"
#include "toolpaths/InterchangeLines.h"

namespace faults {

void StockModel::Receive(Report report) {
  switch (report) {
    case Report::kEndWait:
    case Report::kEndProgress:
    case Report::kIsActive:
      return;
    case Report::kWarning:
      return Record("Warning", kWarningText);
    default:
      return Notify();
  }
}

void StockModel::Notify() {
  if (Call("LoadMessage")) Call("ShowProgress");
  if (Asked("IsCancelled")) throw Stop{true};
}

void StockModel::RecordFatal(const std::string& message) { Record("Error", message); }

void StockModel::Record(const std::string& kind, const std::string& message) {
  const std::string file = "job\\ErrorCapture.txt";
  const bool exists = Call("fopen") && now.files.contains(file);
  if (exists) Call("fclose");
  if (!Call("fopen")) return;
  if (!exists) now.files[file] = "";
  const bool isAtEnd = Call("fseek");
  if (isAtEnd) {
    now.files[file] +=
        support::TextFileBytes("\n" + kind + " Message Received:\n" + message + "\n");
  }
  Call("fclose");
  if (!isAtEnd) return;
  const std::string copy = CopyBase() + "TmpSaveErrorCapture.txt";
  Remove(copy);
  Copy(file, copy);
}

std::string StockModel::CopyBase() {
  const bool isNamed = Call("RegOpen") && Call("GetStringValue");
  return isNamed ? "keep\\Job1_" : "job\\Job1_";
}

bool StockModel::OpenForReading(bool* status) {
  const bool hasStream = Call("m_fopen_hl");
  if (m_writesEveryStatus || !hasStream) *status = hasStream;
  if (!Call("m_fopen_hl status")) *status = false;
  return hasStream;
}

bool StockModel::OpenForWriting(const std::string& file, bool* status) {
  const bool hasStream = OpenForReading(status);
  if (hasStream) now.files[file] = "";
  return hasStream;
}

bool StockModel::OpenForReading() {
  bool status = false;
  return OpenForReading(&status) && status;
}

bool StockModel::OpenForWriting(const std::string& file) {
  bool status = false;
  return OpenForWriting(file, &status) && status;
}

bool StockModel::Pending::PassOn() {
  const std::string bytes = std::exchange(m_bytes, "");
  if (!m_hasFailed && !bytes.empty()) m_hasFailed = !m_write(bytes);
  return !m_hasFailed;
}

StockModel::Pending StockModel::PendingFor(const std::string& file, bool isText) {
  return Pending(
      [this, file, isText](const std::string& bytes) { return Write(file, bytes, isText); });
}

bool StockModel::Flush(Pending& pending) {
  if (pending.PassOn() && !Call("fflush")) pending.SetFailed();
  return !pending.HasFailed();
}

bool StockModel::ConvertPaths(const std::vector<support::Path>& paths) {
  const std::string file = "job\\BinaryPaths.txt";
  if (!Call("fopen")) return false;
  bool isWhole = Call("fopen");
  if (isWhole) {
    now.files[file] = "";
    Pending text = PendingFor(file, true);
    isWhole = Call("fread");
    if (isWhole) {
      text.Put(lines::File(paths));
      isWhole = Flush(text);
    }
    Call("fclose");
  }
  Call("fclose");
  return isWhole;
}

bool StockModel::RunSweep(const Sweep& sweep) {
  Surface output(*this, sweep.output, AnswerBody());
  return InDirectory([&] {
    try {
      SweepStock(sweep, output);
      return true;
    } catch (const Stop&) {
      if (output.IsMade()) output.Close();
      Remove(sweep.output);
      return false;
    }
  });
}

void StockModel::SweepStock(const Sweep& sweep, Surface& output) {
  if (!Memory()) return;
  Kernel("IFSweep()");
  Kernel("OpenStockChannel");
  // A relative name means nothing outside of the working directory.
  const bool isFound = !now.isAtHome || sweep.input == sweep.inputFile;
  if (!Load(sweep.input, isFound ? sweep.inputFile : "", "stock")) return;
  if (!Memory()) return;
  output.Create();
  if (sweep.setsBuffering) Kernel("SetFiveAxisBufferingLevel");
  Kernel("Run");
  Play(output);
  Kernel("Run ends");
}

}  // namespace faults
