// The small language in which json/forms.cpp writes the forms of the tool's lines, and its reader.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using Json = nlohmann::ordered_json;

// A value that a pattern found, and its name.
struct Found {
  std::string name;
  Json value;
  bool lineNamed;  // the name was taken from the line
};

// A pattern is compared with the beginning of a text. A character stands for itself, \t for any
// number of blanks and tabs. Braces hold a field:
//
//   {name:kind}    a value; {:kind} is read and dropped
//   {%}            the name of the next {%:kind}, made snake_case; a name that ends with an index,
//                  as "ucCondition[3]", loses the index and has a list
//   {name=value}   reads nothing; the value is true, false, null, a number or this text
//   {name[]:kind}  a list, even of one value
//
// Kinds:
//   d  decimal number         n  the same, with a fraction if it has one
//   x  hexadecimal number without 0x
//   b  byte in hexadecimal digits; more digits are the sign of a negative number and dropped
//   f  flag: Y, ON, V, 1 and the mark "**", or N, OFF, X, 0 and two blanks in place of the mark
//   F  the same, but another number stays a number
//   p  power: "18.0 dBm (0x24)" or the same without the blank before the bracket
//   L  any number of bytes, each as " 0x24"
//   B  bits of words: "DW1[31:00]DW0[15:00]"
//   1  one byte as text       2  two of them
//   w  text without blanks    t  text in one line, as short as may be
//   v  as t, but a whole number (x with 0x) becomes the number
//   e  one of the command's words, else as t
//   T  text of several lines, as long as may be, up to a limit
//   *  all of the text but what the pattern has after the field; {*} is its own name
//
// Returns how much of the text the pattern takes, nothing if the text does not begin with it. The
// values are appended to `*found`. `words` are the command's.
std::optional<size_t> MatchPattern(std::string_view pattern, std::string_view text,
                                   const std::vector<std::string>& words,
                                   std::vector<Found>* found);
