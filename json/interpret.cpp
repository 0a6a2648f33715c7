#include "json/interpret.h"

#include <algorithm>
#include <locale>
#include <unordered_map>

#include "json/decode.h"
#include "json/forms.h"
#include "json/pattern.h"

namespace {

// No output has so many names in one object. A line that would add more is unread.
constexpr size_t MostNames = 256;

// Adds a value to one that has the same name: the two become a list.
void Append(Json* old, Json value) {
  if (!old->is_array()) *old = Json::array({std::move(*old)});
  old->push_back(std::move(value));
}

// Adds a value under a name.
void Add(Json* object, std::string name, Json value) {
  const bool isList = name.ends_with("[]");
  if (isList) name.resize(name.size() - 2);
  const auto [old, isNew] = object->emplace(name, isList ? Json::array() : value);
  if (isList || !isNew) Append(&*old, std::move(value));
}

// The object that a form's place names. Null if the place is the last object of an empty list, or
// if a line gave its name to another value.
Json* Place(Json* object, std::string_view place) {
  while (!place.empty() && object->is_object()) {
    const size_t dot = std::min(place.find('.'), place.size());
    const bool isLast = dot == place.size();
    std::string name(place.substr(0, dot));
    place.remove_prefix(isLast ? dot : dot + 1);
    if (!name.ends_with("[]")) {
      object = &*object->emplace(name, Json::object()).first;
      continue;
    }
    name.resize(name.size() - 2);
    if (isLast) object->emplace(name, Json::array());
    const auto list = object->find(name);
    if (list == object->end() || !list->is_array()) return nullptr;
    if (isLast) list->push_back(Json::object());
    object = &list->back();
  }
  return object->is_object() ? object : nullptr;
}

// Removes the first line from the text and returns it, with its line end.
std::string_view TakeLine(std::string_view* text) {
  const size_t end = text->find('\n');
  const std::string_view line = text->substr(0, end == std::string_view::npos ? end : end + 1);
  text->remove_prefix(line.size());
  return line;
}

std::string WithoutLineEnd(std::string_view line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return Utf8(line);
}

// Adds the driver's text: all lines, and the pairs of lines that are "NAME = VALUE" or "NAME:
// VALUE".
void AddFreeText(std::string_view text, Json* values) {
  Json& lines = (*values)["lines"] = Json::array();
  Json::object_t pairs;
  std::unordered_map<std::string, size_t> places;  // in the pairs, which are too many to search
  while (!text.empty()) {
    const std::string line = WithoutLineEnd(TakeLine(&text));
    lines.push_back(line);
    std::vector<Found> found;
    if (!MatchPattern("\t{%}\t=\t{%:v}\t\n", line + "\n", {}, &found)) {
      MatchPattern("\t{%}\t: \t{%:v}\t\n", line + "\n", {}, &found);
    }
    for (Found& pair : found) {
      const auto [at, isNew] = places.try_emplace(pair.name, pairs.size());
      if (isNew) {
        pairs.emplace_back(std::move(pair.name), std::move(pair.value));
      } else {
        Append(&pairs.data()[at->second].second, std::move(pair.value));
      }
    }
  }
  (*values)["pairs"] = std::move(pairs);
}

// Whether values of this name are objects or lists, or the name of a file.
bool IsPlace(std::string_view name) {
  if (Lists("lines pairs report", name)) return true;
  return std::ranges::any_of(Forms(), [&](const Form& form) {
    return form.place.substr(0, form.place.find_first_of("[.")) == name;
  });
}

// What has been read of a run.
struct Reader {
  const ToolRun* run;
  std::string command;
  const CommandRule* rule = nullptr;  // null: no such command
  std::vector<const Form*> forms = {};
  bool freeText = false;  // the command may print the driver's text
  bool closeFailed = false;
  Json values = Json::object();
  Json error = nullptr;
  Json unread = Json::array();
  Meaning meaning = Meaning::Value;
  Statuses status = 0;   // of the last form that has its own
  bool openEnd = false;  // the last line was unread and has no end
};

// Whether the run's status fits a meaning, or a form's own statuses if there are any.
bool Fits(const Reader& reader, Meaning meaning, Statuses own) {
  const auto& status = reader.run->status;
  const CommandRule* rule = reader.rule;
  Statuses fitting = own;
  if (rule == nullptr || meaning == Meaning::NoDevice || meaning == Meaning::Value) {
    fitting = Status1;
  } else if (own == 0 && meaning == Meaning::Last) {
    fitting = reader.run->words.empty() ? Status1 : rule->done;
  } else if (own == 0) {
    fitting =
        meaning == Meaning::Wrong ? rule->wrong : static_cast<Statuses>(Status0Or1 ^ rule->done);
  }
  return !status || ((*status == 0 || *status == 1) && (fitting >> *status & 1) != 0);
}

// Whether a message is the tool's own, although the driver's text may look the same.
bool IsOwn(const Reader& reader, const Form& form) {
  // A command that takes no argument cannot get a wrong one.
  const bool mayBeWrong = reader.run->words.size() > 1 || reader.rule->wrong != reader.rule->done;
  if (form.meaning == Meaning::Wrong && !mayBeWrong) return false;
  return reader.closeFailed || Fits(reader, form.meaning, form.status);
}

void AddError(std::string_view matched, const std::vector<Found>& found, Json* error) {
  std::string lines(matched);
  for (const Found& item : found) {
    if (item.name == "line") {
      lines = item.value.get<std::string>();
    } else {
      (*error)[item.name] = item.value;
    }
  }
  if (error->contains("code")) {
    const std::string_view name = ErrorName((*error)["code"].get<int64_t>());
    (*error)["name"] = name.empty() ? Json() : Json(name);
  }
  for (std::string_view rest = lines; !rest.empty();) {
    (*error)["lines"].push_back(WithoutLineEnd(TakeLine(&rest)));
  }
}

// Adds what a form found to the values. Returns false if the values have no place for it: the tool
// prints no such line after the ones before.
bool AddValues(std::string_view place, std::vector<Found> found, Json* values) {
  Json* object = Place(values, place);
  if (object == nullptr || object->size() >= MostNames) return false;
  for (const Found& item : found) {
    const bool mayRepeat = item.lineNamed || item.name.ends_with("[]");
    if (!mayRepeat && object->contains(item.name)) return false;
    if (item.lineNamed && place.empty() && IsPlace(item.name)) return false;
  }
  for (Found& item : found) {
    if (item.name == FreeText) {
      AddFreeText(item.value.get<std::string>(), object);
    } else {
      Add(object, std::move(item.name), std::move(item.value));
    }
  }
  return true;
}

// Returns how much of the text the form takes, 0 for nothing. With `anyStatus` a message of the
// tool counts even if the run's status does not fit it.
size_t TryForm(Reader* reader, const Form& form, std::string_view text, bool anyStatus) {
  std::vector<Found> found;
  const auto length = MatchPattern(form.pattern, text, reader->run->words, &found);
  if (!length) return 0;
  if (form.meaning > Meaning::Last) {
    const std::string_view rest = text.substr(*length);
    const bool standsAlone = rest.empty() || rest == "\n";
    if (reader->freeText && !(standsAlone && (anyStatus || IsOwn(*reader, form)))) return 0;
    AddError(text.substr(0, *length), found, &reader->error);
  } else if (!AddValues(form.place, std::move(found), &reader->values)) {
    return 0;
  }
  reader->meaning = std::max(reader->meaning, form.meaning);
  if (form.status != 0) reader->status = form.status;
  return *length;
}

void Read(Reader* reader, std::string_view text) {
  while (!text.empty()) {
    size_t length = 0;
    for (const bool anyStatus : {false, true}) {
      for (const Form* form : reader->forms) {
        if (length > 0 || (anyStatus && !reader->freeText)) break;
        length = TryForm(reader, *form, text, anyStatus);
      }
    }
    reader->openEnd = length == 0 && text.find('\n') == std::string_view::npos;
    if (length == 0) reader->unread.push_back(WithoutLineEnd(TakeLine(&text)));
    text.remove_prefix(length);
  }
}

// Why there is no outcome. Null if there is one.
const char* FaultOf(const Reader& reader, Meaning meaning, bool isUnknown) {
  const auto& status = reader.run->status;
  if (status && (*status < 0 || *status >= 128)) return "killed";
  if (status == 3) return nullptr;
  if (meaning == Meaning::Value && !isUnknown) {
    return reader.rule == nullptr ? "contradiction" : "unfinished";
  }
  if (reader.openEnd) return "unfinished";
  return Fits(reader, meaning, reader.status) ? nullptr : "contradiction";
}

// Adds the outcome, or why there is none.
void Judge(const Reader& reader, bool nothingPrinted, Json* result) {
  static constexpr const char* Outcomes[] = {"unknown_command", "done",     "refused", "failed",
                                             "wrong_arguments", "no_device"};
  const CommandRule* rule = reader.rule;
  const bool isKnown = rule != nullptr && (!rule->engineering || reader.run->engineering);
  const bool isSilent = isKnown && Lists(SilentCommands, reader.command);
  Meaning meaning = reader.closeFailed ? Meaning::NoDevice : reader.meaning;
  if (meaning == Meaning::Value && nothingPrinted && isSilent) meaning = Meaning::Last;
  const char* fault = FaultOf(reader, meaning, nothingPrinted && !isKnown);
  const char* outcome = reader.run->status == 3 ? "ended" : Outcomes[static_cast<int>(meaning)];
  (*result)["outcome"] = fault == nullptr ? Json(outcome) : Json();
  (*result)["fault"] = fault != nullptr ? Json(fault) : Json();
}

// If every line ends with CR LF, the host wrote that for the tool's line ends.
std::string WithoutCarriageReturns(const std::string& text) {
  std::string changed;
  for (std::string_view rest = text; !rest.empty();) {
    changed += TakeLine(&rest);
    if (!changed.ends_with('\n')) break;
    if (!changed.ends_with("\r\n")) return text;
    changed.erase(changed.size() - 2, 1);
  }
  return changed;
}

// The command in small letters. Without a word the tool prints what it prints for help.
std::string CommandOf(const std::vector<std::string>& words) {
  std::string command = words.empty() ? "help" : words[0];
  for (char& character : command) character = std::tolower(character, std::locale::classic());
  return command;
}

}  // namespace

bool WritesReport(const std::vector<std::string>& words) {
  return CommandOf(words) == "export_rssi_report";
}

Json Interpret(const ToolRun& run) {
  const std::string output = WithoutCarriageReturns(run.output);
  std::string_view text = output;
  Json result = {{"command", Json::array()}, {"program", nullptr}, {"version", nullptr}};
  for (const std::string& word : run.words) result["command"].push_back(Utf8(word));
  const bool isReport = WritesReport(run.words) && text.starts_with("<?xml");
  if (!isReport) {
    while (text.starts_with('\n')) text.remove_prefix(1);
    std::vector<Found> banner;
    const auto length = MatchPattern(
        "{program=WLANX tool}WLANX tool, Version {version:w}\n{:t}\n\n", text, {}, &banner);
    if (!length) throw NotToolOutput("it does not begin with the banner of wlanx");
    text.remove_prefix(*length);
    for (Found& item : banner) result[item.name] = std::move(item.value);
  }

  Reader reader = {.run = &run, .command = CommandOf(run.words)};
  for (const CommandRule& rule : CommandRules()) {
    if (Lists(rule.names, reader.command)) reader.rule = &rule;
  }
  for (const Form& form : Forms()) {
    if (!form.commands.empty() && !Lists(form.commands, reader.command)) continue;
    reader.forms.push_back(&form);
    if (form.pattern.find(FreeText) != std::string_view::npos) reader.freeText = true;
  }
  std::string_view printed = text;
  constexpr std::string_view CloseFailed = "CloseDevice Failed\n";
  if (printed.ends_with(CloseFailed) && run.status.value_or(1) == 1) {
    reader.closeFailed = true;
    printed.remove_suffix(CloseFailed.size());
  }
  Read(&reader, printed);
  if (run.report) {
    reader.values["report"] = Utf8(run.report->path);
    Read(&reader, WithoutCarriageReturns(run.report->text));
  }
  if (reader.closeFailed) reader.error["lines"].push_back("CloseDevice Failed");

  result["status"] = run.status ? Json(*run.status) : Json();
  Judge(reader, printed.empty(), &result);
  result["error"] = std::move(reader.error);
  result["values"] = std::move(reader.values);
  result["text"] = Utf8(text);
  result["unread"] = std::move(reader.unread);
  return result;
}

std::string InterpretAsLine(const ToolRun& run, bool* isDone) {
  const Json result = Interpret(run);
  *isDone = result["outcome"] == "done";
  // ASCII looks the same in every code page of a console.
  return result.dump(-1, ' ', true);
}
