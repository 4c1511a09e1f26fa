#include "faults/Model.h"

#include <algorithm>

#include "support/TempDirectory.h"

namespace faults {
namespace {

constexpr const char* kSurfaceHeader = "binary surface";

}  // namespace

Model::Model(World before, const Injection& injection, const Counted& counted)
    : now(std::move(before)), m_injection(injection) {
  now.thrown = World::Thrown::kNothing;
  std::size_t others = 0;
  for (std::size_t i = 0; i < counted.size(); ++i) {
    const bool isText = counted[i].function == kTextMemory;
    if (!isText) ++others;
    if (i + 1 == injection.place) {
      m_injection.place = isText ? 0 : others;
      if (isText) m_textBehind = others;
    }
    if (!counted[i].path.empty()) m_blocks[counted[i].path].push_back(counted[i].bytes);
  }
}

World Model::Run() {
  try {
    Act();
    ThrowIfTextIsDue();
  } catch (const Foreign&) {
    const bool isText = m_injection.way == Way::kFails;
    now.thrown = isText ? World::Thrown::kNoMemory : World::Thrown::kForeign;
  }
  std::sort(now.streams.begin(), now.streams.end());
  return now;
}

void Model::ThrowIfTextIsDue() {
  if (m_textBehind != m_calls.size()) return;
  m_textBehind.reset();
  throw Foreign();
}

bool Model::Call(const std::string& function) {
  ThrowIfTextIsDue();
  m_calls.push_back(function);
  if (m_calls.size() != m_injection.place) return true;
  if (m_injection.way == Way::kForeign) throw Foreign();
  if (m_injection.way == Way::kFull || m_injection.way == Way::kHalfFull) {
    m_room = m_injection.room;
    return true;
  }
  return false;
}

bool Model::Exists(const std::string& file) {
  return Call("file_exists") && now.files.contains(file);
}

void Model::Remove(const std::string& file) {
  if (Call("remove")) now.files.erase(file);
}

bool Model::Copy(const std::string& from, const std::string& to) {
  if (!Call("CopyFileA")) return false;
  const auto found = now.files.find(from);
  if (found == now.files.end()) return false;
  // A copy that does not fit is none at all.
  if (m_room && found->second.size() > *m_room) return false;
  Claim(found->second.size());
  now.files[to] = found->second;
  return true;
}

std::size_t Model::Claim(std::size_t bytes) {
  const std::size_t fitting = m_room ? std::min(bytes, *m_room) : bytes;
  if (m_room) *m_room -= fitting;
  return fitting;
}

std::size_t Model::NextBlock(const std::string& file, std::size_t most) {
  std::vector<std::size_t>& blocks = m_blocks[file];
  if (blocks.empty()) return most;
  const std::size_t size = std::min(blocks.front(), most);
  blocks.erase(blocks.begin());
  return size;
}

bool Model::Write(const std::string& file, const std::string& bytes, bool isText) {
  for (std::size_t done = 0; done < bytes.size();) {
    const std::size_t size = NextBlock(file, bytes.size() - done);
    if (!Call("fwrite")) return false;
    const std::size_t fitting = Claim(size);
    const std::string block = bytes.substr(done, fitting);
    now.files[file] += isText ? support::TextFileBytes(block) : block;
    if (fitting < size) return false;
    done += size;
  }
  return true;
}

bool Model::Overwrite(const std::string& file, std::size_t place, const std::string& bytes) {
  NextBlock(file, bytes.size());
  if (!Call("fwrite")) return false;
  const std::size_t fitting = Claim(bytes.size());
  now.files[file].replace(place, fitting, bytes.substr(0, fitting));
  return fitting == bytes.size();
}

void Model::Kernel(const std::string& call, bool isSilent) {
  for (const Report report : ReportsIn(call)) {
    const bool isFatal = !Call(kCallback);
    if (isSilent) continue;
    if (isFatal) Fatal(kFatalText);
    Receive(report);
  }
}

void Model::Fatal(const std::string& message) {
  RecordFatal(message);
  throw Stop{false};
}

bool Model::Load(const std::string& name, const std::string& file, const std::string& channel) {
  if (!Call("m_fopen") || !now.files.contains(file)) return false;
  bool hasHandles = false;
  try {
    hasHandles = Call("fread") && Memory();
    if (hasHandles) {
      Kernel(channel + ".Reset");
      for (const char* operation : {".AddVertex", ".AddTriangle"}) {
        for (int i = 0; i < 2; ++i) Kernel(channel + operation);
      }
      Kernel(channel + ".Close");
    }
  } catch (...) {
    // Whatever passes through the loader leaves its stream and its array of handles.
    now.streams.push_back("QZTUTLA2 " + name);
    if (hasHandles) ++now.blocks;
    throw;
  }
  Call("m_fclose");
  return hasHandles;
}

void Model::Play(Surface& output) {
  Kernel("output.Reset");
  for (const char* call : {"output.AddVertex", "output.AddTriangle"}) {
    for (int i = 0; i < 2; ++i) {
      Kernel(call);
      if (!Memory()) Fatal("The output has no memory.");
    }
  }
  Kernel("output.Close");
  output.Close();
}

void Model::Surface::Create() {
  m_isMade = true;
  if (!m_model.Call("m_fopen")) return;
  m_model.now.files[m_file] = "";
  m_isOpen = true;
  if (m_model.Write(m_file, kSurfaceHeader)) return;
  m_model.Call("m_fclose");
  m_isOpen = false;
}

void Model::Surface::Close() {
  const bool isWritten = m_isOpen && m_model.Write(m_file, m_body) && m_model.Call("fflush");
  if (m_isOpen) m_model.Call("m_fclose");
  m_isOpen = false;
  if (!isWritten) m_model.Remove(m_file);
}

Model::Surface::~Surface() noexcept(false) {
  if (m_isOpen) m_model.Call("m_fclose");
}

Model::DirectoryScope::DirectoryScope(Model& model)
    : m_model(model), m_isKnown(model.Call("GetCurrentDirectoryA")) {
  if (model.Call("SetCurrentDirectoryA")) model.now.isAtHome = false;
}

Model::DirectoryScope::~DirectoryScope() noexcept(false) {
  // A directory that is not known cannot be put back.
  if (m_model.Call("SetCurrentDirectoryA") && m_isKnown) m_model.now.isAtHome = true;
}

}  // namespace faults
