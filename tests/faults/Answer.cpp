#include "faults/Answer.h"

#include <algorithm>

namespace faults {
namespace {

constexpr std::int32_t kCount = 501;

// The last one in front of the others.
template <class List>
void PutLastFirst(List* list) {
  std::rotate(list->begin(), list->end() - 1, list->end());
}

}  // namespace

support::Surface Answer() {
  support::Surface answer;
  for (std::int32_t i = 1; i <= kCount; ++i) {
    answer.vertices.push_back({0.5 * i, 0.25 * (i % 7), 3.0});
    // Every facet names its own vertex, the first one and the last one.
    answer.facets.push_back({{i, 1, kCount}, static_cast<unsigned char>(i % 200)});
  }
  return answer;
}

std::string AnswerFile() {
  support::Surface answer = Answer();
  PutLastFirst(&answer.vertices);
  PutLastFirst(&answer.facets);
  for (auto& facet : answer.facets) {
    for (auto& number : facet.numbers) number = number == kCount ? 1 : number + 1;
  }
  return support::BinarySurfaceBytes(answer);
}

std::string AnswerBody() { return AnswerFile().substr(14); }

}  // namespace faults
