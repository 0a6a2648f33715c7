// What the tool prints: which commands there are, what their statuses mean, and the form of each
// line.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

// Sets of exit statuses.
using Statuses = uint8_t;
constexpr Statuses Status0 = 1;
constexpr Statuses Status1 = 2;
constexpr Statuses Status0Or1 = 3;

// Commands whose statuses mean the same.
struct CommandRule {
  std::string_view names;  // with a blank between two
  bool engineering;        // only wlanx-eng has them
  Statuses done;           // the other one of 0 and 1 if it was refused or failed
  Statuses wrong;
};

// What a line says about the run.
enum class Meaning {
  Value,    // nothing
  Last,     // the command may be done after it
  Refused,  // the outcome, as the others below it
  Failed,
  Wrong,
  NoDevice,
};

// One form of a line, or of lines that belong together.
struct Form {
  std::string_view commands = {};  // which print it, with a blank between two; empty: all
  std::string_view pattern = {};   // as described in json/pattern.h
  // Where the values go: names with a dot between two, the object itself if it is empty. NAME is an
  // object. NAME[] is a new object in a list; NAME[]. with its dot is the last object of the list.
  std::string_view place = {};
  Meaning meaning = Meaning::Value;
  Statuses status = 0;  // instead of that of the command's rule; 0: the rule's
};

// Commands that print nothing if all went well.
constexpr std::string_view SilentCommands = "hw_write coex_info";

// A command with such a field in a pattern prints a text of the driver. It is the last thing that
// the command prints and may look like a message of the tool. So a message counts only if nothing
// else was printed. No other pattern has the character.
constexpr std::string_view FreeText = "*";

// The first form that fits is taken.
std::span<const CommandRule> CommandRules();
std::span<const Form> Forms();

// Whether a list of names, with a blank between two, has this one. Commands are in small letters.
bool Lists(std::string_view names, std::string_view name);

// The name of a Windows error code. Empty for a code that drivers do not usually return.
std::string_view ErrorName(int64_t code);
