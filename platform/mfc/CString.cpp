#include "CString.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

// The block in front of the characters, so that the object itself stays one pointer wide.
struct CString::Buffer {
  int length;
  int capacity;

  char* Text() noexcept { return reinterpret_cast<char*>(this + 1); }
};

namespace {

int LengthOf(const char* text) {
  if (text == nullptr) return 0;
  const size_t length = std::strlen(text);
  if (length > static_cast<size_t>(std::numeric_limits<int>::max() / 2)) throw std::bad_alloc();
  return static_cast<int>(length);
}

// MFC's own notion of blanks in the "C" locale; the classification functions would ask the locale.
bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

int CompareTexts(const char* a, const char* b) { return std::strcmp(a, b == nullptr ? "" : b); }

}  // namespace

CString::CString() noexcept : m_text(nullptr) {}

CString::CString(const CString& other) : m_text(nullptr) {
  Assign(other.GetString(), other.GetLength());
}

CString::CString(CString&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}

CString::CString(const char* text) : m_text(nullptr) { Assign(text, LengthOf(text)); }

CString::CString(const char* text, int length) : m_text(nullptr) {
  if (text != nullptr) Assign(text, std::max(length, 0));
}

CString::CString(char character, int repeat) : m_text(nullptr) {
  if (repeat <= 0) return;
  Reserve(repeat);
  std::memset(m_text, character, static_cast<size_t>(repeat));
  SetLength(repeat);
}

CString::CString(const char* a, int lengthOfA, const char* b, int lengthOfB) : m_text(nullptr) {
  if (lengthOfA > std::numeric_limits<int>::max() / 2 - lengthOfB) throw std::bad_alloc();
  Reserve(lengthOfA + lengthOfB);
  Append(a, lengthOfA);
  Append(b, lengthOfB);
}

CString::~CString() { ::operator delete(Block()); }

CString& CString::operator=(const CString& other) {
  if (this != &other) Assign(other.GetString(), other.GetLength());
  return *this;
}

CString& CString::operator=(CString&& other) noexcept {
  Adopt(other);
  return *this;
}

CString& CString::operator=(const char* text) {
  Assign(text, LengthOf(text));
  return *this;
}

CString& CString::operator=(char character) {
  Assign(&character, 1);
  return *this;
}

CString& CString::operator+=(const CString& other) {
  Append(other.GetString(), other.GetLength());
  return *this;
}

CString& CString::operator+=(const char* text) {
  Append(text, LengthOf(text));
  return *this;
}

CString& CString::operator+=(char character) {
  Append(&character, 1);
  return *this;
}

int CString::GetLength() const noexcept { return m_text == nullptr ? 0 : Block()->length; }
bool CString::IsEmpty() const noexcept { return GetLength() == 0; }

void CString::Empty() noexcept {
  ::operator delete(Block());
  m_text = nullptr;
}

CString::operator const char*() const noexcept { return GetString(); }
const char* CString::GetString() const noexcept { return m_text == nullptr ? "" : m_text; }
char CString::GetAt(int index) const { return GetString()[index]; }
char CString::operator[](int index) const { return GetString()[index]; }

void CString::SetAt(int index, char character) {
  if (index >= 0 && index < GetLength()) m_text[index] = character;
}

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const {
  const int kept = std::clamp(count, 0, GetLength());
  return CString(GetString() + (GetLength() - kept), kept);
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
  const int start = std::clamp(first, 0, GetLength());
  return CString(GetString() + start, std::clamp(count, 0, GetLength() - start));
}

int CString::Find(char character, int start) const noexcept {
  if (start < 0 || start >= GetLength()) return -1;
  const void* found =
      std::memchr(m_text + start, character, static_cast<size_t>(GetLength() - start));
  return found == nullptr ? -1 : static_cast<int>(static_cast<const char*>(found) - m_text);
}

int CString::Find(const char* text, int start) const noexcept {
  if (text == nullptr || start < 0 || start > GetLength()) return -1;
  const char* found = std::strstr(GetString() + start, text);
  return found == nullptr ? -1 : static_cast<int>(found - GetString());
}

int CString::ReverseFind(char character) const noexcept {
  for (int index = GetLength() - 1; index >= 0; --index) {
    if (m_text[index] == character) return index;
  }
  return -1;
}

int CString::Compare(const char* text) const noexcept { return CompareTexts(GetString(), text); }

int CString::CompareNoCase(const char* text) const noexcept {
  const char* a = GetString();
  const char* b = text == nullptr ? "" : text;
  while (*a != '\0' && Lower(*a) == Lower(*b)) {
    ++a;
    ++b;
  }
  return static_cast<int>(static_cast<unsigned char>(Lower(*a))) -
         static_cast<int>(static_cast<unsigned char>(Lower(*b)));
}

void CString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  FormatV(format, arguments);
  va_end(arguments);
}

void CString::FormatV(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  // The analyser takes a copied list for an unset one.
  const int length =
      std::vsnprintf(nullptr, 0, format, again);  // NOLINT(clang-analyzer-valist.Uninitialized)
  va_end(again);
  // A second string takes the text, since an argument may be this one's own.
  CString formatted;
  if (length > 0) {
    formatted.Reserve(length);
    std::vsnprintf(formatted.m_text, static_cast<size_t>(length) + 1, format, arguments);
    formatted.SetLength(length);
  }
  Adopt(formatted);
}

void CString::AppendFormat(const char* format, ...) {
  CString addition;
  va_list arguments;
  va_start(arguments, format);
  addition.FormatV(format, arguments);
  va_end(arguments);
  *this += addition;
}

char* CString::GetBuffer(int minimumLength) {
  Reserve(std::max(minimumLength, GetLength()));
  return m_text;
}

void CString::ReleaseBuffer(int newLength) {
  if (m_text == nullptr) return;
  const int length = newLength >= 0 ? newLength : static_cast<int>(std::strlen(m_text));
  SetLength(std::min(length, Capacity()));
}

CString& CString::TrimLeft() {
  int first = 0;
  while (IsBlank(GetString()[first])) ++first;
  if (first > 0) *this = Mid(first);
  return *this;
}

CString& CString::TrimRight() {
  int length = GetLength();
  while (length > 0 && IsBlank(m_text[length - 1])) --length;
  SetLength(length);
  return *this;
}

CString& CString::TrimRight(char character) {
  int length = GetLength();
  while (length > 0 && m_text[length - 1] == character) --length;
  SetLength(length);
  return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::MakeLower() {
  std::transform(m_text, m_text + GetLength(), m_text, Lower);
  return *this;
}

CString& CString::MakeUpper() {
  std::transform(m_text, m_text + GetLength(), m_text, Upper);
  return *this;
}

int CString::Replace(char from, char to) {
  const auto count = std::count(m_text, m_text + GetLength(), from);
  std::replace(m_text, m_text + GetLength(), from, to);
  return static_cast<int>(count);
}

CString operator+(const CString& a, const CString& b) {
  return CString(a.GetString(), a.GetLength(), b.GetString(), b.GetLength());
}
CString operator+(const CString& a, const char* b) {
  return CString(a.GetString(), a.GetLength(), b, LengthOf(b));
}
CString operator+(const char* a, const CString& b) {
  return CString(a, LengthOf(a), b.GetString(), b.GetLength());
}
CString operator+(const CString& a, char b) { return CString(a.GetString(), a.GetLength(), &b, 1); }
CString operator+(char a, const CString& b) { return CString(&a, 1, b.GetString(), b.GetLength()); }

CString::Buffer* CString::Block() const noexcept {
  return m_text == nullptr ? nullptr : reinterpret_cast<Buffer*>(m_text) - 1;
}

int CString::Capacity() const noexcept { return m_text == nullptr ? 0 : Block()->capacity; }

void CString::Assign(const char* text, int length) {
  if (length == 0) {
    Empty();
  } else if (m_text != nullptr && length <= Capacity()) {
    // The text may be a part of this string.
    std::memmove(m_text, text, static_cast<size_t>(length));
    SetLength(length);
  } else {
    CString fresh;
    fresh.Append(text, length);
    Adopt(fresh);
  }
}

void CString::Append(const char* text, int length) {
  if (length == 0) return;
  const int before = GetLength();
  if (length > std::numeric_limits<int>::max() / 2 - before) throw std::bad_alloc();
  if (m_text != nullptr && before + length <= Capacity()) {
    std::memmove(m_text + before, text, static_cast<size_t>(length));
    SetLength(before + length);
    return;
  }
  // The old characters stay until the new ones are copied: they may be the same.
  CString grown;
  grown.Reserve(std::max(before + length, before + before / 2));
  std::memcpy(grown.m_text, GetString(), static_cast<size_t>(before));
  std::memcpy(grown.m_text + before, text, static_cast<size_t>(length));
  grown.SetLength(before + length);
  Adopt(grown);
}

void CString::Reserve(int length) {
  if (m_text != nullptr && length <= Capacity()) return;
  void* memory = ::operator new(sizeof(Buffer) + static_cast<size_t>(length) + 1);
  auto* block = new (memory) Buffer{GetLength(), length};
  std::memcpy(block->Text(), GetString(), static_cast<size_t>(GetLength()) + 1);
  ::operator delete(Block());
  m_text = block->Text();
}

void CString::SetLength(int length) {
  if (m_text == nullptr) return;
  Block()->length = length;
  m_text[length] = '\0';
}

void CString::Adopt(CString& other) noexcept {
  if (this == &other) return;
  ::operator delete(Block());
  m_text = std::exchange(other.m_text, nullptr);
}

bool operator==(const CString& a, const CString& b) noexcept { return a.Compare(b) == 0; }
bool operator==(const CString& a, const char* b) noexcept { return a.Compare(b) == 0; }
bool operator==(const char* a, const CString& b) noexcept { return b.Compare(a) == 0; }
bool operator!=(const CString& a, const CString& b) noexcept { return a.Compare(b) != 0; }
bool operator!=(const CString& a, const char* b) noexcept { return a.Compare(b) != 0; }
bool operator!=(const char* a, const CString& b) noexcept { return b.Compare(a) != 0; }
bool operator<(const CString& a, const CString& b) noexcept { return a.Compare(b) < 0; }
bool operator<(const CString& a, const char* b) noexcept { return a.Compare(b) < 0; }
bool operator<(const char* a, const CString& b) noexcept { return b.Compare(a) > 0; }
bool operator>(const CString& a, const CString& b) noexcept { return a.Compare(b) > 0; }
bool operator>(const CString& a, const char* b) noexcept { return a.Compare(b) > 0; }
bool operator>(const char* a, const CString& b) noexcept { return b.Compare(a) < 0; }
