#include "ChannelTest.h"

#include "platform/QZCore.h"

ChannelTest::ChannelTest() : m_tolerance(tol) {
  tol = 0.1;
  host.events.Alias(directory.Path().string(), "job");
}

ChannelTest::~ChannelTest() { tol = m_tolerance; }

Points Row(int count) {
  Points points;
  for (int i = 0; i < count; ++i) points.push_back({2.0 * i, 0, 0});
  return points;
}

void Play(CurveTransfer* channel, const support::Outline& outline) {
  std::vector<const int*> handles;
  for (const auto& point : outline.points) {
    handles.push_back(channel->AddPoint(point.data()));
    ASSERT_NE(handles.back(), nullptr);
  }
  for (const auto& [start, end] : outline.segments) {
    const int* from = handles.at(static_cast<std::size_t>(start) - 1);
    const int* to = handles.at(static_cast<std::size_t>(end) - 1);
    ASSERT_NE(channel->AddSegment(from, to), nullptr);
  }
}

int PlayAndClose(CurveTransfer* channel, const support::Outline& outline) {
  EXPECT_EQ(channel->Reset(), 0);
  Play(channel, outline);
  return channel->Close();
}
