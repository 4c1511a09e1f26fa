#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>

/// Names, in small letters, and their texts.
using IniSection = std::map<std::string, std::string>;

/// The ASCII letters of a name in small ones; names of keys and values do not mind the case.
std::string FoldCase(std::string text);

/// The section "[name]" of an INI file; nothing when there is none. Lines are "name = text", with
/// blanks around both dropped; lines that begin with ';' or '#' are comments. Of a name that comes
/// twice the last text counts.
std::optional<IniSection> ReadIniSection(std::istream& file, const std::string& name);
