// The filter of a mesh that is longer than a block by two of its colours, one of them listed twice.

#include <algorithm>
#include <set>

#include "addin/exports.h"
#include "faults/Model.h"
#include "faults/Trials.h"
#include "support/JobFiles.h"

namespace faults {
namespace {

constexpr std::size_t kVertices = 3000;
constexpr std::size_t kFacets = 900;
constexpr std::size_t kBlockOfFile = 65536;
constexpr std::size_t kBlockOfChannel = 500;
constexpr const char* kOutput = "job\\out.iff";
constexpr const char* kHeader = "binary surface";

// Of the vertices some are used by no facet.
support::Surface Mesh() {
  support::Surface mesh;
  for (std::size_t i = 0; i < kVertices; ++i) {
    const auto x = static_cast<double>(i);
    mesh.vertices.push_back({x, 0.5 * x, 3.0});
  }
  for (std::size_t i = 0; i < kFacets; ++i) {
    const auto number = [&](std::size_t corner) {
      return static_cast<std::int32_t>(2 + (4 * i + corner) % (kVertices - 1));
    };
    mesh.facets.push_back(
        {{number(0), number(1), number(3)}, static_cast<unsigned char>(5 + i % 3)});
  }
  return mesh;
}

const std::vector<unsigned char>& Colours() {
  static const std::vector<unsigned char> colours = {5, 7, 5};
  return colours;
}

// What the channel is given, and what it makes of it: for want of memory single vertices and facets
// are missing.
class Channel {
 public:
  explicit Channel(const support::Surface& mesh) : m_mesh(mesh) {}

  void TakeVertex(std::size_t number, bool hasMemory) {
    if (hasMemory) m_vertices.push_back(number);
  }
  void TakeFacet(const support::Surface::Facet& facet, bool hasMemory) {
    if (hasMemory) m_facets.push_back(facet);
  }
  bool IsAtEndOfVertexBlock() const { return m_vertices.size() % kBlockOfChannel == 0; }
  bool IsAtEndOfFacetBlock() const { return m_facets.size() % kBlockOfChannel == 0; }

  // The file behind its header: block by block, the newest first. What comes behind a facet with a
  // corner that is missing is not written.
  bool Body(std::string* body) const {
    support::Surface written;
    std::vector<std::int32_t> numberOf(kVertices + 1, 0);
    NewestFirst(m_vertices, [&](std::size_t vertex) {
      written.vertices.push_back(m_mesh.vertices[vertex - 1]);
      numberOf[vertex] = static_cast<std::int32_t>(written.vertices.size());
    });
    bool isWhole = true;
    NewestFirst(m_facets, [&](support::Surface::Facet facet) {
      for (auto& number : facet.numbers) {
        number = numberOf[static_cast<std::size_t>(number)];
        isWhole = isWhole && number > 0;
      }
      written.facets.push_back(facet);
    });
    *body = support::BinarySurfaceBytes(written).substr(14);
    return isWhole;
  }

 private:
  template <class List, class Action>
  static void NewestFirst(const List& list, Action action) {
    for (std::size_t block = (list.size() + kBlockOfChannel - 1) / kBlockOfChannel; block > 0;) {
      --block;
      const std::size_t end = std::min(list.size(), (block + 1) * kBlockOfChannel);
      for (std::size_t i = block * kBlockOfChannel; i < end; ++i) action(list[i]);
    }
  }

  const support::Surface& m_mesh;
  std::vector<std::size_t> m_vertices;  // numbers in the input
  std::vector<support::Surface::Facet> m_facets;
};

class FilterModel : public Model {
 public:
  using Model::Model;

 protected:
  void Act() override {
    now.flag = 0;
    now.flag = Filter() ? 1 : 0;
  }
  // There is no kernel, and nobody who reports.
  void Receive(Report) override {}
  void RecordFatal(const std::string&) override {}

 private:
  bool Filter() {
    if (!Memory()) return false;
    bool isOpen = Call("m_fopen");
    if (isOpen) {
      now.files[kOutput] = "";
      if (!Write(kOutput, kHeader)) {
        Call("m_fclose");
        isOpen = false;
      }
    }
    if (!Call("m_fopen")) return false;
    const bool isLoaded = Load(isOpen);
    Call("m_fclose");
    return isLoaded;
  }

  bool Load(bool isOpen) {
    const support::Surface mesh = Mesh();
    Channel channel(mesh);
    if (!Call("fread") || !Memory()) return false;
    // Forward to the facets, to see which vertices they use, and back.
    if (!Call("fseek") || !Call("fread") || !Call("fseek")) return false;
    if (!PlayVertices(mesh, &channel) || !PlayFacets(mesh, &channel)) return false;
    Close(channel, isOpen);
    return true;
  }

  // In two blocks: the second is read when no whole vertex is left of the first.
  bool PlayVertices(const support::Surface& mesh, Channel* channel) {
    std::set<std::size_t> used;
    for (const auto& facet : mesh.facets) used.insert(facet.numbers.begin(), facet.numbers.end());
    if (!Call("fread")) return false;
    for (std::size_t number = 1; number <= kVertices; ++number) {
      if (number == kBlockOfFile / 24 + 1 && !Call("fread")) return false;
      if (used.contains(number)) {
        channel->TakeVertex(number, !channel->IsAtEndOfVertexBlock() || Memory());
      }
    }
    return true;
  }

  bool PlayFacets(const support::Surface& mesh, Channel* channel) {
    for (const auto& facet : mesh.facets) {
      for (const unsigned char colour : Colours()) {
        if (colour != facet.colour) continue;
        channel->TakeFacet(facet, !channel->IsAtEndOfFacetBlock() || Memory());
      }
    }
    return true;
  }

  void Close(const Channel& channel, bool isOpen) {
    std::string body;
    bool isWritten = isOpen;
    if (isWritten && channel.Body(&body)) {
      isWritten = Write(kOutput, body) && Call("fflush");
    } else {
      isWritten = false;
    }
    if (isOpen) Call("m_fclose");
    if (!isWritten) Remove(kOutput);
  }
};

class FilterTrial : public Trial {
 public:
  FilterTrial() { Put("out.iff", "what an earlier job left"); }

  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<FilterModel>(before, injection, counted);
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    return {{"in.iff", support::BinarySurfaceBytes(Mesh())}};
  }

  void Export() override {
    bool succeeded = true;
    std::string input = Named("in.iff");
    std::string output = Named("out.iff");
    std::vector<unsigned char> colours = Colours();
    CallWith(&succeeded, [&] {
      qztutlFilterStockByColor(input.data(), output.data(),
                               static_cast<unsigned short>(colours.size()), colours.data(),
                               &succeeded);
    });
  }
};

}  // namespace

std::unique_ptr<Trial> MakeFilterTrial() { return std::make_unique<FilterTrial>(); }

}  // namespace faults
