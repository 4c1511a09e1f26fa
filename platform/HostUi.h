#pragma once

// Three classes of the host's user interface. The add-in uses none of them; its library carries
// their copy constructors and assignments because the host's header asks every add-in for them.

#include "MfcApi.h"
#include "platform/Export.h"

// Defined as an export by the host UI library for its own build.
#ifndef HOSTUI_API
#define HOSTUI_API QZ_IMPORT
#define HOSTUI_TYPE QZ_IMPORT_TYPE
#endif

// Defined as an export by the add-in, which alone defines these members.
#ifndef HOSTUI_COPY_API
#define HOSTUI_COPY_API QZ_IMPORT
#endif

/// A small text shown beside a datum under the pointer.
class HOSTUI_TYPE UIDataTip {
 public:
  /// `x` and `y` in pixels of the host's graphics window.
  HOSTUI_API UIDataTip(const char* text, int x, int y);
  HOSTUI_COPY_API UIDataTip(const UIDataTip& other);
  HOSTUI_COPY_API UIDataTip& operator=(const UIDataTip& other);
  HOSTUI_API virtual ~UIDataTip();

  HOSTUI_API const char* Text() const;

 private:
  CString m_text;
  int m_x;
  int m_y;
};

/// A text that says why an input was refused, with the number of the field it belongs to.
class HOSTUI_TYPE UIErrorTip {
 public:
  HOSTUI_API UIErrorTip(const char* text, int field);
  HOSTUI_COPY_API UIErrorTip(const UIErrorTip& other);
  HOSTUI_COPY_API UIErrorTip& operator=(const UIErrorTip& other);
  HOSTUI_API virtual ~UIErrorTip();

  HOSTUI_API const char* Text() const;
  HOSTUI_API int Field() const;

 private:
  CString m_text;
  int m_field;
};

/// Steps done and steps announced of a long process.
class HOSTUI_TYPE CLongProcess {
 public:
  HOSTUI_API explicit CLongProcess(int total);
  HOSTUI_COPY_API CLongProcess(const CLongProcess& other);
  HOSTUI_COPY_API CLongProcess& operator=(const CLongProcess& other);

  HOSTUI_API void Advance(int steps);
  /// 0 to 100; 100 for a process without steps.
  HOSTUI_API int Percentage() const;

 private:
  int m_done;
  int m_total;
};
