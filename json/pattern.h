// The small language in which json/forms.cpp says how the tool's lines look, and what reads it.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

using Json = nlohmann::ordered_json;

// What a pattern found: a name and what stood there.
struct Found {
  std::string name;
  Json value;
  bool lineNamed = false;  // the name was taken from the line
};

// A pattern matches the text that it begins: a character stands for itself, \t for any number of
// blanks and tabs. In braces stands what is read:
//
//   {name:kind}    a value; {:kind} is read and dropped
//   {%}            the name of the value that follows as {%:kind}, in snake_case; a name that ends
//                  with an index, as "ucCondition[3]", loses it and is a list
//   {name=value}   nothing is read; the value is true, false or this text
//   {name[]:kind}  a list, also of one value
//
// Kinds:
//   d  decimal number         x  hexadecimal number without 0x
//   n  decimal fraction       v  a number of these kinds (x with 0x) where it is one, else as t
//   f  flag: Y, ON, V, 1 or N, OFF, X, 0; NA is null, another number stays one
//   m  mark of the row in force: "**" or two blanks
//   p  power: "18.0 dBm (0x24)" or the same without the blank before the bracket
//   h  two hexadecimal digits
//   L  any number of bytes, each as " 0x24"
//   B  bits of words: "DW1[31:00]DW0[15:00]"
//   c  one byte as text       2  two of them
//   w  text without blanks    t  text in one line, as short as may be
//   e  one of the command's words, else as t
//   T  text of any lines, as long as may be, to a limit
//
// Returns whether `text` begins with the pattern; `*length` is then what it took of it. `words` are
// the command's. What is found is appended to `*found`.
bool MatchPattern(std::string_view pattern, std::string_view text,
                  const std::vector<std::string>& words, std::vector<Found>* found, size_t* length);

// "fgSrEn" as "fg_sr_en", "BT Profile" as "bt_profile".
std::string SnakeCase(std::string_view name);

// What kind v makes of a text.
Json NumberOrText(std::string_view text);
