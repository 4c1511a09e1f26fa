#include "ListChannel.h"

#include <cstdint>

namespace {

std::int32_t NumberOf(void* handle) {
  return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

}  // namespace

int ListChannel::Reset() {
  Enter('R');
  return 0;
}

void* ListChannel::AddVertex(const double* xyz) {
  Enter('V');
  mesh.vertices.push_back({xyz[0], xyz[1], xyz[2]});
  const std::size_t number = mesh.vertices.size();
  if (nullVertexFrom != 0 && number >= nullVertexFrom) return nullptr;
  return reinterpret_cast<void*>(number);
}

void* ListChannel::AddTriangle(void* a, void* b, void* c, char colour) {
  Enter('T');
  mesh.facets.push_back(
      {{NumberOf(a), NumberOf(b), NumberOf(c)}, static_cast<unsigned char>(colour)});
  return this;
}

void ListChannel::Close() { Enter('C'); }

void ListChannel::Enter(char operation) {
  calls += operation;
  if (calls.size() == throwAt) throw Thrown();
}
