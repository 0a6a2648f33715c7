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

// Commands that say the same by their status.
struct CommandRule {
  std::string_view names;  // with a blank between two
  bool engineering;        // in wlanx-eng only
  Statuses done;
  Statuses refused;  // also when the command failed
  Statuses wrong;
};

// What a line says about the run.
enum class Meaning {
  Value,    // nothing
  Last,     // the command may be done after it
  Advice,   // a further line of an error
  Refused,  // the outcome, as the others below it
  Failed,
  Wrong,
  NoDevice,
};

struct Form {
  std::string_view commands = {};  // which print it, with a blank between two; empty: all
  std::string_view pattern = {};   // as described in json/pattern.h
  // Where the values go: empty, or names with a dot between two. A name is that of an object; with
  // [] at its end that of a list of objects, of which a new one is meant, but the last one where a
  // dot follows.
  std::string_view place = {};
  Meaning meaning = Meaning::Value;
  Statuses status = 0;  // where it is not that of the command's rule
};

// Commands that print nothing when all went well.
constexpr std::string_view SilentCommands = "hw_write coex_info";

// Commands that print a text of the driver; FreeText is the last thing that they print. It may look
// like anything, so that a message of the tool's own is one only if nothing else stands there.
constexpr std::string_view FreeTextCommands = "stat get_wfd get_umac country txbf get_cmd_str";
constexpr std::string_view FreeText = "{*}";

// The first form that fits is taken.
std::span<const CommandRule> CommandRules();
std::span<const Form> Forms();

// Whether a list with a blank between two names has this one, without regard to case.
bool Lists(std::string_view names, std::string_view name);

// The name of a Windows error code, empty for one that a driver does not usually return.
std::string_view ErrorName(int64_t code);
