#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "faults/Model.h"
#include "support/JobFiles.h"

namespace faults {

/// What the three operations in a working directory have in common. The directory is "job"; the
/// registry names "keep" for the copies.
class StockModel : public Model {
 public:
  using Model::Model;

 protected:
  /// Calls driver() as the export does: with a callback object, or not at all.
  template <class Driver>
  void Frame(Driver driver) {
    now.flag = 0;
    if (Memory()) now.flag = driver() ? 1 : 0;
  }

  void Receive(Report report) override;
  void RecordFatal(const std::string& message) override;

  /// The directory of the copies, with the job's prefix.
  std::string CopyBase();

  /// A tracked open of a file that is there, or that is made. Returns whether there is a stream;
  /// what counts is `*status`, which the host writes, if only when the open fails.
  bool OpenForReading(bool* status);
  bool OpenForWriting(const std::string& file, bool* status);
  /// With the status of a host that writes it at every open.
  bool OpenForReading();
  bool OpenForWriting(const std::string& file);
  bool m_writesEveryStatus = true;

  /// A file that is put together in memory and passed on in blocks. What is left is passed on in
  /// the end.
  class Pending {
   public:
    explicit Pending(std::function<bool(const std::string&)> write) : m_write(std::move(write)) {}
    ~Pending() noexcept(false) { PassOn(); }
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;

    void Put(const std::string& bytes) { m_bytes += bytes; }
    bool PassOn();
    bool HasFailed() const { return m_hasFailed; }
    void SetFailed() { m_hasFailed = true; }

   private:
    std::function<bool(const std::string&)> m_write;
    std::string m_bytes;
    bool m_hasFailed = false;
  };
  Pending PendingFor(const std::string& file, bool isText = false);
  bool Flush(Pending& pending);

  /// "BinaryPaths.tmp" of these paths is turned into its text.
  bool ConvertPaths(const std::vector<support::Path>& paths);

  struct Sweep {
    std::string input;      // as it is handed over
    std::string inputFile;  // what it means in the working directory
    std::string output;
    bool setsBuffering;
  };
  /// False after a stop or an error.
  bool RunSweep(const Sweep& sweep);

 private:
  void Notify();
  void Record(const std::string& kind, const std::string& message);
  void SweepStock(const Sweep& sweep, Surface& output);
};

}  // namespace faults
