#pragma once

#include <stdarg.h>
#include <stddef.h>

/// The narrow string class of MFC, as far as it is used here: members are spelled as there and
/// behave as there. One pointer wide. Every object owns its characters; an empty string owns none.
/// Lengths and indices count bytes. Running out of memory throws std::bad_alloc.
class CString {
 public:
  CString() noexcept;
  CString(const CString& other);
  CString(CString&& other) noexcept;
  /// A null `text` makes an empty string.
  CString(const char* text);
  CString(const char* text, int length);
  CString(char character, int repeat);
  ~CString();

  CString& operator=(const CString& other);
  CString& operator=(CString&& other) noexcept;
  CString& operator=(const char* text);
  CString& operator=(char character);
  CString& operator+=(const CString& other);
  CString& operator+=(const char* text);
  CString& operator+=(char character);

  int GetLength() const noexcept;
  bool IsEmpty() const noexcept;
  void Empty() noexcept;
  /// Never null; valid until the string changes.
  operator const char*() const noexcept;
  const char* GetString() const noexcept;
  /// `index` from 0 to GetLength(); the last is the terminating zero.
  char GetAt(int index) const;
  char operator[](int index) const;
  /// `index` from 0 to GetLength() - 1.
  void SetAt(int index, char character);

  /// Parts of the string; counts outside the string are cut to it.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  /// The first place at or behind `start`, -1 when there is none.
  int Find(char character, int start = 0) const noexcept;
  int Find(const char* text, int start = 0) const noexcept;
  /// The last place, -1 when there is none.
  int ReverseFind(char character) const noexcept;

  /// Negative, 0 or positive. CompareNoCase ignores the case of ASCII letters.
  int Compare(const char* text) const noexcept;
  int CompareNoCase(const char* text) const noexcept;

  /// Replaces the contents with the formatted text; the arguments may point into the old contents.
  void Format(const char* format, ...);
  void FormatV(const char* format, va_list arguments);
  void AppendFormat(const char* format, ...);

  /// Gives room to write `minimumLength` characters and a terminating zero into the string itself.
  /// ReleaseBuffer ends that; -1 takes the length from the terminating zero.
  char* GetBuffer(int minimumLength);
  void ReleaseBuffer(int newLength = -1);

  CString& TrimLeft();
  CString& TrimRight();
  CString& TrimRight(char character);
  CString& Trim();
  CString& MakeLower();
  CString& MakeUpper();
  /// Replaces every `from`; returns how many there were.
  int Replace(char from, char to);

  friend CString operator+(const CString& a, const CString& b);
  friend CString operator+(const CString& a, const char* b);
  friend CString operator+(const char* a, const CString& b);
  friend CString operator+(const CString& a, char b);
  friend CString operator+(char a, const CString& b);

 private:
  struct Buffer;

  CString(const char* a, int lengthOfA, const char* b, int lengthOfB);
  Buffer* Block() const noexcept;
  int Capacity() const noexcept;
  void Assign(const char* text, int length);
  void Append(const char* text, int length);
  void Reserve(int length);
  void SetLength(int length);
  void Adopt(CString& other) noexcept;

  /// The characters, with a terminating zero; null stands for the empty string, so that an empty
  /// string of one module is empty in every other one.
  char* m_text;
};

bool operator==(const CString& a, const CString& b) noexcept;
bool operator==(const CString& a, const char* b) noexcept;
bool operator==(const char* a, const CString& b) noexcept;
bool operator!=(const CString& a, const CString& b) noexcept;
bool operator!=(const CString& a, const char* b) noexcept;
bool operator!=(const char* a, const CString& b) noexcept;
bool operator<(const CString& a, const CString& b) noexcept;
bool operator<(const CString& a, const char* b) noexcept;
bool operator<(const char* a, const CString& b) noexcept;
bool operator>(const CString& a, const CString& b) noexcept;
bool operator>(const CString& a, const char* b) noexcept;
bool operator>(const char* a, const CString& b) noexcept;

static_assert(sizeof(CString) == sizeof(void*), "a CString is one pointer wide");
