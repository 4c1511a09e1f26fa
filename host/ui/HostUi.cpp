#include "platform/HostUi.h"

UIDataTip::UIDataTip(const char* text, int x, int y) : m_text(text), m_x(x), m_y(y) {}
UIDataTip::~UIDataTip() = default;
const char* UIDataTip::Text() const { return m_text; }

UIErrorTip::UIErrorTip(const char* text, int field) : m_text(text), m_field(field) {}
UIErrorTip::~UIErrorTip() = default;
const char* UIErrorTip::Text() const { return m_text; }
int UIErrorTip::Field() const { return m_field; }

CLongProcess::CLongProcess(int total) : m_done(0), m_total(total) {}

void CLongProcess::Advance(int steps) {
  const int left = m_total - m_done;
  m_done += steps < left ? steps : left;
}

int CLongProcess::Percentage() const {
  return m_total > 0 ? static_cast<int>(100.0 * m_done / m_total) : 100;
}
