#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "faults/Injection.h"
#include "faults/Reports.h"
#include "faults/World.h"

namespace faults {

/// An operation as its description has it, acted out on a World with one thing going wrong. It
/// knows files by their whole contents and shares no code with the add-in; what it asks of host,
/// library and memory is counted, so that it can be held against the calls of the add-in itself.
class Model {
 public:
  /// `counted` is a run of the add-in without an injection. Only the sizes of the blocks that it
  /// wrote are taken from there: a file that cannot be finished holds the blocks before.
  Model(World before, const Injection& injection, const Counted& counted);
  virtual ~Model() = default;
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;

  World Run();

  /// The functions called, in order, memory for texts left out.
  const std::vector<std::string>& Calls() const { return m_calls; }

 protected:
  /// The callbacks' own exception, and any other.
  struct Stop {
    bool byUser;
  };
  struct Foreign {};

  virtual void Act() = 0;

  /// What a report leads to; throws Stop when the user wants it.
  virtual void Receive(Report report) = 0;
  /// What happens before the callbacks throw for a fatal error.
  virtual void RecordFatal(const std::string& message) = 0;

  /// Counts a call and says whether it goes well.
  bool Call(const std::string& function);
  bool Memory() { return Call("new"); }

  bool Exists(const std::string& file);
  void Remove(const std::string& file);
  bool Copy(const std::string& from, const std::string& to);
  /// Appends to a file, block by block.
  bool Write(const std::string& file, const std::string& bytes, bool isText = false);
  /// Writes over what the file has at a place, in one block.
  bool Overwrite(const std::string& file, std::size_t place, const std::string& bytes);

  /// Whether the user is found wanting to stop.
  bool Asked(const std::string& question) { return !Call(question); }

  /// A call of the kernel with what it reports there. A silent kernel has a dialog that does
  /// nothing.
  void Kernel(const std::string& call, bool isSilent = false);
  [[noreturn]] void Fatal(const std::string& message);

  /// A surface file played into a channel of the kernel. `name` is the file's as it was handed
  /// over, `file` the one that it means.
  bool Load(const std::string& name, const std::string& file, const std::string& channel);

  /// Calls work() with another current directory.
  template <class Work>
  auto InDirectory(Work work) {
    const DirectoryScope scope(*this);
    return work();
  }

  /// A surface file that is made through a channel: its header at once, its body at Close. The
  /// answer of the kernels is one that takes two blocks of memory for vertices and two for facets.
  class Surface {
   public:
    Surface(Model& model, std::string file, std::string body)
        : m_model(model), m_file(std::move(file)), m_body(std::move(body)) {}
    ~Surface() noexcept(false);
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    void Create();
    bool IsMade() const { return m_isMade; }
    void Close();

   private:
    Model& m_model;
    std::string m_file;
    std::string m_body;
    bool m_isMade = false;
    bool m_isOpen = false;
  };
  /// The kernel's answer goes into the channel.
  void Play(Surface& output);

  World now;

 private:
  class DirectoryScope {
   public:
    explicit DirectoryScope(Model& model);
    ~DirectoryScope() noexcept(false);
    DirectoryScope(const DirectoryScope&) = delete;
    DirectoryScope& operator=(const DirectoryScope&) = delete;

   private:
    Model& m_model;
    bool m_isKnown;
  };

  std::size_t Claim(std::size_t bytes);
  std::size_t NextBlock(const std::string& file, std::size_t most);
  void ThrowIfTextIsDue();

  Injection m_injection;
  std::optional<std::size_t> m_textBehind;  // calls after which a text finds no memory
  std::optional<std::size_t> m_room;
  std::map<std::string, std::vector<std::size_t>> m_blocks;  // still to be written, by file
  std::vector<std::string> m_calls;
};

}  // namespace faults
