// A producer that does anything in any order, into the channel and into the plain one: the same
// results and the same file.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include "InputFile.h"
#include "curves/CurveXferQZ.h"
#include "platform/QZCore.h"
#include "support/PlainCurveChannel.h"

namespace {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "the channels differ: %s\n", what);
  std::abort();
}

std::string BytesOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// What comes next of the fuzzer's bytes; 0 behind their end.
class Choices {
 public:
  Choices(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}
  bool AreLeft() const { return m_next != m_end; }
  unsigned Next() { return m_next == m_end ? 0U : *m_next++; }

 private:
  const std::uint8_t* m_next;
  const std::uint8_t* m_end;
};

class TwoChannels {
 public:
  TwoChannels(int mode, const std::string& one, const std::string& other)
      : m_channel(mode, one.c_str()), m_plain(mode, other.c_str(), tol) {}

  void AddPoint(Choices* choices) {
    const double xyz[3] = {0.01 * choices->Next(), 0.01 * choices->Next(), 0.01 * choices->Next()};
    m_handles.push_back(m_channel.AddPoint(xyz));
    m_plainHandles.push_back(m_plain.AddPoint(xyz));
    Require(*m_handles.back() == *m_plainHandles.back(), "a point's number");
  }

  // Of handles from before a Reset, too.
  void AddSegment(Choices* choices) {
    const unsigned from = choices->Next();
    const unsigned to = choices->Next();
    if (m_handles.empty()) return;
    const std::size_t a = from % m_handles.size();
    const std::size_t b = to % m_handles.size();
    Require(m_channel.AddSegment(m_handles[a], m_handles[b]) != nullptr, "a segment refused");
    m_plain.AddSegment(m_plainHandles[a], m_plainHandles[b]);
  }

  void Reset() {
    m_channel.Reset();
    m_plain.Reset();
  }

  void Group() {
    m_channel.BeginGroup();
    m_channel.EndGroup();
  }

  void Close() {
    Require(m_channel.Close() == m_plain.Close(), "what Close returns");
    m_plain.Finish();
  }

 private:
  CurveXferQZ m_channel;
  support::PlainCurveChannel m_plain;
  std::vector<const int*> m_handles;
  std::vector<const int*> m_plainHandles;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile file("curves.tmp");
  static const std::string plain = file.Path() + ".plain";
  if (size > 2000) return 0;
  Choices choices(data, size);
  tol = 0.01;
  {
    TwoChannels channels(static_cast<int>(choices.Next() % 2), file.Path(), plain);
    while (choices.AreLeft()) {
      const unsigned choice = choices.Next() % 32;
      if (choice < 8) {
        channels.AddPoint(&choices);
      } else if (choice < 28) {
        channels.AddSegment(&choices);
      } else if (choice < 30) {
        channels.Close();
      } else if (choice < 31) {
        channels.Reset();
      } else {
        channels.Group();
      }
    }
    channels.Close();
  }
  Require(BytesOf(file.Path()) == BytesOf(plain), "the file");
  return 0;
}
