#include "simulator/redact/redact.h"

#include <cstdlib>
#include <cstring>

#include "simulator/scenario_parser.h"

namespace {

constexpr uint32_t MostReplacements = 200000;
constexpr uint32_t MacBytes = 6;
constexpr uint32_t MacTextBytes = 17;

// What a payload holds at a fixed place.
struct Field {
  uint32_t oid;
  uint32_t offset;
  uint32_t size;
  Secret kind;
};

constexpr uint32_t OidReadRegister = 0xFFFCF001;
constexpr uint32_t OidWriteRegister = 0xFFFCF002;
constexpr uint32_t OidChannelPreference = 0x0FFFC206;

constexpr Field Fields[] = {
    {0xFFFCF105, 0, MacBytes, Secret::MacAddress},            // the adapter's
    {0xFFFCF016, 4, 32, Secret::Ssid},                        // signal check
    {0xFFFCF016, 36, MacBytes, Secret::MacAddress},           // the network found
    {0x0FFFC204, 0, MacBytes, Secret::MacAddress},            // BSSID
    {0x0FFFC20A, 0, MacBytes, Secret::MacAddress},            // second BSSID
    {OidChannelPreference, 1, MacBytes, Secret::MacAddress},  // of commands 3 and 4
    {OidReadRegister, 4, 4, Secret::Register},                // the chip's
    {OidWriteRegister, 4, 4, Secret::Register},               // the chip's
    {0xFFFCF00B, 4, 4, Secret::Register},                     // PCIe configuration space, read
    {0xFFFCF00C, 4, 4, Secret::Register},                     // the same, written
    {0xFFFCF01E, 12, 16, Secret::EfuseByte},                  // a block of the efuse
};

// Registers that the tool judges by, with values of its own: the link's generation and driving.
constexpr uint32_t KeptRegisters[] = {0x74031090, 0x74070A04, 0x74070A08};

struct Redactor {
  Redaction* redaction;
  uint32_t capacity;
  uint32_t* slots;  // hash table of replacements, counted from 1; 0 is free
  uint32_t slotMask;
  uint32_t kinds[4];           // values found of each kind
  uint32_t ssidsOfLength[33];  // of the network names by length
  bool replacing;              // the second of two passes
  uint32_t length;             // of the payload at hand
  uint8_t* payload;
  uint8_t* redacted;
  uint8_t* done;  // 1: the byte is replaced
};

bool Fail(Redactor* redactor, const char* what) {
  redactor->redaction->error.what = what;
  return false;
}

uint32_t* FindSlot(Redactor* redactor, Secret kind, const uint8_t* value, uint32_t length) {
  uint32_t hash = 2166136261U ^ static_cast<uint32_t>(kind);
  for (uint32_t i = 0; i < length; i++) hash = (hash ^ value[i]) * 16777619U;
  for (;; hash++) {
    uint32_t* slot = &redactor->slots[hash & redactor->slotMask];
    if (*slot == 0) return slot;
    const Replacement* found = &redactor->redaction->replacements[*slot - 1];
    if (found->kind == kind && found->length == length &&
        memcmp(found->value, value, length) == 0) {
      return slot;
    }
  }
}

// Makes the stand-in of a value that is the `number`th of its kind, counted from 1. Returns false
// where there is none left.
bool MakeStandIn(Redactor* redactor, Replacement* replacement, uint32_t number) {
  uint8_t* bytes = replacement->standIn;
  switch (replacement->kind) {
    case Secret::MacAddress:
      bytes[0] = 0x02;  // locally administered
      for (uint32_t i = 0; i < 3; i++) bytes[5 - i] = static_cast<uint8_t>(number >> (8 * i));
      return true;
    case Secret::Register:
      for (uint32_t i = 0; i < 3; i++) bytes[i] = static_cast<uint8_t>(number >> (8 * i));
      bytes[3] = 0x5A;
      return true;
    case Secret::EfuseByte:
      bytes[0] = static_cast<uint8_t>(number);
      return true;
    case Secret::Ssid:
      break;
  }
  uint32_t rest = redactor->ssidsOfLength[replacement->length]++;
  for (uint32_t i = replacement->length; i > 0; i--, rest /= 26) {
    bytes[i - 1] = static_cast<uint8_t>('a' + rest % 26);
  }
  return rest == 0;
}

// Whether every byte is the same one of these, which tells nothing.
bool IsCommon(const uint8_t* value, uint32_t length) {
  for (uint32_t i = 1; i < length; i++) {
    if (value[i] != value[0]) return false;
  }
  return value[0] == 0 || (value[0] == 0xFF && length > 1);
}

// Finds a value's replacement, or adds one. Returns null, with the reason, where there is no room.
Replacement* Replace(Redactor* redactor, Secret kind, const uint8_t* value, uint32_t length) {
  Redaction* redaction = redactor->redaction;
  uint32_t* slot = FindSlot(redactor, kind, value, length);
  if (*slot == 0) {
    Replacement* added = &redaction->replacements[redaction->count];
    added->kind = kind;
    added->length = static_cast<uint8_t>(length);
    memcpy(added->value, value, length);
    const uint32_t number = ++redactor->kinds[static_cast<uint32_t>(kind)];
    if (redaction->count == redactor->capacity || !MakeStandIn(redactor, added, number)) {
      Fail(redactor, "too many different values to replace");
      return nullptr;
    }
    *slot = ++redaction->count;
  }
  return &redaction->replacements[*slot - 1];
}

// Takes a value of the payload, which the second pass replaces.
bool TakeValue(Redactor* redactor, Secret kind, uint32_t offset, uint32_t length) {
  const uint8_t* value = redactor->payload + offset;
  if (redactor->done[offset] != 0 || IsCommon(value, length)) return true;
  Replacement* replacement = Replace(redactor, kind, value, length);
  if (replacement == nullptr) return false;
  if (!redactor->replacing) return true;
  memcpy(redactor->redacted + offset, replacement->standIn, length);
  memset(redactor->done + offset, 1, length);
  replacement->places++;
  return true;
}

// Takes a network name up to `end`, in pieces where zeros divide it.
bool TakeSsid(Redactor* redactor, uint32_t offset, uint32_t end) {
  while (offset < end) {
    uint32_t length = 0;
    while (length < 32 && offset + length < end && redactor->payload[offset + length] != 0)
      length++;
    if (length > 0 && !TakeValue(redactor, Secret::Ssid, offset, length)) return false;
    offset += length > 0 ? length : 1;
  }
  return true;
}

bool IsKept(const Redactor* redactor, const Field* field) {
  if (field->oid == OidChannelPreference) {
    return redactor->payload[0] != 3 && redactor->payload[0] != 4;
  }
  if (field->oid != OidReadRegister && field->oid != OidWriteRegister) return false;
  uint32_t address = 0;
  memcpy(&address, redactor->payload, sizeof(address));
  for (const uint32_t kept : KeptRegisters) {
    if (address == kept) return true;
  }
  return false;
}

bool TakeField(Redactor* redactor, const Field* field) {
  if (field->offset + field->size > redactor->length || IsKept(redactor, field)) return true;
  switch (field->kind) {
    case Secret::Ssid:
      return TakeSsid(redactor, field->offset, field->offset + field->size);
    case Secret::EfuseByte:
      for (uint32_t i = 0; i < field->size; i++) {
        if (!TakeValue(redactor, Secret::EfuseByte, field->offset + i, 1)) return false;
      }
      return true;
    default:
      return TakeValue(redactor, field->kind, field->offset, field->size);
  }
}

// Reads an address of the form 02:a8:00:5c:1d:42, or with dashes.
bool ParseMac(const uint8_t* text, uint8_t (&address)[MacBytes]) {
  for (size_t i = 0; i < MacBytes; i++) {
    const int high = NibbleValue(static_cast<char>(text[3 * i]));
    const int low = NibbleValue(static_cast<char>(text[3 * i + 1]));
    if (high < 0 || low < 0) return false;
    address[i] = static_cast<uint8_t>(high * 16 + low);
    if (i + 1 < MacBytes && (text[3 * i + 2] != text[2] || (text[2] != ':' && text[2] != '-'))) {
      return false;
    }
  }
  return true;
}

void WriteHexByte(char* digits, uint8_t byte) {
  digits[0] = "0123456789abcdef"[byte >> 4];
  digits[1] = "0123456789abcdef"[byte & 15];
}

bool TakeMacText(Redactor* redactor, uint32_t offset) {
  uint8_t address[MacBytes];
  if (offset + MacTextBytes > redactor->length || redactor->done[offset] != 0) {
    return true;
  }
  if (!ParseMac(redactor->payload + offset, address) || IsCommon(address, MacBytes)) return true;
  Replacement* replacement = Replace(redactor, Secret::MacAddress, address, MacBytes);
  if (replacement == nullptr) return false;
  if (!redactor->replacing) return true;
  for (uint32_t i = 0; i < MacBytes; i++) {
    WriteHexByte(reinterpret_cast<char*>(redactor->redacted + offset + size_t{3} * i),
                 replacement->standIn[i]);
  }
  memset(redactor->done + offset, 1, MacTextBytes);
  replacement->places++;
  return true;
}

// Goes on behind what is in brackets, as the number in "SSID(1)".
uint32_t SkipBrackets(const Redactor* redactor, uint32_t offset) {
  const uint8_t* text = redactor->payload;
  while (offset < redactor->length && text[offset] == ' ') offset++;
  if (offset == redactor->length || (text[offset] != '(' && text[offset] != '[')) return offset;
  const uint8_t bracket = text[offset] == '(' ? ')' : ']';
  while (offset < redactor->length && text[offset] != bracket && text[offset] != '\n') offset++;
  return offset < redactor->length ? offset + 1 : offset;
}

// Takes what stands behind "SSID", but not "BSSID", and an equals sign or a colon in a text: up to
// the second quotation mark where it begins with one, else up to the line's end.
bool TakeSsidText(Redactor* redactor, uint32_t offset) {
  const uint8_t* text = redactor->payload;
  const uint32_t length = redactor->length;
  if (length - offset < 5 || (offset > 0 && (text[offset - 1] | 32) == 'b')) return true;
  for (uint32_t i = 0; i < 4; i++) {
    if ((text[offset + i] | 32) != "ssid"[i]) return true;
  }
  uint32_t start = SkipBrackets(redactor, offset + 4);
  bool named = false;
  bool quoted = false;
  while (start < length && !quoted && strchr(" \t=:\"", text[start]) != nullptr &&
         text[start] != 0) {
    quoted = named && text[start] == '"';
    named = named || text[start] == '=' || text[start] == ':';
    start++;
  }
  uint32_t end = start;
  while (end < length && strchr(quoted ? "\r\n\"" : "\r\n", text[end]) == nullptr) end++;
  while (end > start && text[end - 1] == ' ') end--;
  return !named || TakeSsid(redactor, start, end);
}

// Replaces a value that was found elsewhere and stands here among other bytes.
void ReplaceKnown(Redactor* redactor, Secret kind, uint32_t offset, uint32_t length) {
  if (offset + length > redactor->length) return;
  for (uint32_t i = 0; i < length; i++) {
    if (redactor->done[offset + i] != 0) return;
  }
  if (*FindSlot(redactor, kind, redactor->payload + offset, length) == 0) return;
  TakeValue(redactor, kind, offset, length);
}

// The same for addresses and for network names but short ones, which may stand anywhere by chance.
void ReplaceAllKnown(Redactor* redactor, uint32_t offset) {
  constexpr uint32_t ShortestName = 4;
  ReplaceKnown(redactor, Secret::MacAddress, offset, MacBytes);
  for (uint32_t length = 32; length >= ShortestName; length--) {
    if (redactor->ssidsOfLength[length] > 0) ReplaceKnown(redactor, Secret::Ssid, offset, length);
  }
}

// Takes what one payload holds, the efuse's bytes at last.
bool TakePayload(Redactor* redactor, uint32_t oid) {
  memcpy(redactor->redacted, redactor->payload, redactor->length);
  memset(redactor->done, 0, redactor->length);
  for (const Field& field : Fields) {
    if (field.oid != oid || field.kind == Secret::EfuseByte) continue;
    if (!TakeField(redactor, &field)) return false;
  }
  for (uint32_t i = 0; i < redactor->length; i++) {
    if (!TakeMacText(redactor, i) || !TakeSsidText(redactor, i)) return false;
  }
  for (uint32_t i = 0; i < redactor->length && redactor->replacing; i++) {
    ReplaceAllKnown(redactor, i);
  }
  for (const Field& field : Fields) {
    if (field.oid != oid || field.kind != Secret::EfuseByte) continue;
    if (!TakeField(redactor, &field)) return false;
  }
  return true;
}

// Takes a payload in hex pairs. Returns false where it is not one.
bool TakeHex(Redactor* redactor, uint32_t oid, char* hex, uint32_t size) {
  redactor->length = size / 2;
  for (size_t i = 0; i < redactor->length; i++) {
    const int high = NibbleValue(hex[2 * i]);
    const int low = NibbleValue(hex[2 * i + 1]);
    if (high < 0 || low < 0) return Fail(redactor, "not a line of a trace");
    redactor->payload[i] = static_cast<uint8_t>(high * 16 + low);
  }
  if (!TakePayload(redactor, oid)) return false;
  for (size_t i = 0; i < redactor->length && redactor->replacing; i++) {
    if (redactor->payload[i] == redactor->redacted[i]) continue;
    WriteHexByte(hex + 2 * i, redactor->redacted[i]);
  }
  return true;
}

bool StartsWord(const char* word, uint32_t length, const char* start) {
  return length >= strlen(start) && memcmp(word, start, strlen(start)) == 0;
}

// Takes a line that is known to be a statement. Those of another form than a trace's are refused,
// so that nothing is handed on that was not looked through.
bool TakeLine(Redactor* redactor, char* line, uint32_t size) {
  constexpr uint32_t OidWordBytes = 10;
  if (size == 0 || *line == '#' || StartsWord(line, size, "open ") ||
      StartsWord(line, size, "close ")) {
    return true;
  }
  if (size < OidWordBytes || !StartsWord(line, size, "0x") || memchr(line, '\t', size) != nullptr ||
      memchr(line, '#', size) != nullptr) {
    return Fail(redactor, "not a line of a trace");
  }
  uint32_t oid = 0;
  for (uint32_t i = 2; i < OidWordBytes; i++) {
    const int digit = NibbleValue(line[i]);
    if (digit < 0) return Fail(redactor, "not a line of a trace");
    oid = oid << 4 | static_cast<uint32_t>(digit);
  }
  for (uint32_t start = OidWordBytes + 1; start < size;) {
    uint32_t end = start;
    while (end < size && line[end] != ' ') end++;
    char* word = line + start;
    const uint32_t length = end - start;
    if (StartsWord(word, length, "0:")) {
      if (!TakeHex(redactor, oid, word + 2, length - 2)) return false;
    } else if (length == 0 || (*word >= '0' && *word <= '9')) {
      return Fail(redactor, "not a line of a trace");
    }
    start = end + 1;
  }
  return true;
}

bool TakeLines(Redactor* redactor, char* text, uint32_t size) {
  redactor->redaction->error.line = 0;
  for (uint32_t start = StartsWith(text, size, "\xEF\xBB\xBF") ? 3 : 0; start < size;) {
    uint32_t end = start;
    while (end < size && text[end] != '\n') end++;
    const uint32_t lineEnd = end > start && text[end - 1] == '\r' ? end - 1 : end;
    redactor->redaction->error.line++;
    if (!TakeLine(redactor, text + start, lineEnd - start)) return false;
    start = end + 1;
  }
  return true;
}

}  // namespace

Redaction RedactText(char* text, uint32_t size) {
  Redaction redaction = {};
  ScenarioSizes sizes = {};
  redaction.error = ParseScenario(text, size, nullptr, &sizes, nullptr);
  if (redaction.error.what != nullptr) return redaction;
  Redactor redactor = {};
  redactor.redaction = &redaction;
  redactor.capacity = size / 2 < MostReplacements ? size / 2 : MostReplacements;
  redactor.slotMask = 1;
  while (redactor.slotMask < 2 * redactor.capacity) redactor.slotMask = redactor.slotMask * 2 + 1;
  const uint32_t payloadBytes = size / 2 + 1;
  redactor.slots = static_cast<uint32_t*>(calloc(redactor.slotMask + size_t{1}, sizeof(uint32_t)));
  redactor.payload = static_cast<uint8_t*>(calloc(payloadBytes, 3));
  redaction.replacements =
      static_cast<Replacement*>(calloc(redactor.capacity + size_t{1}, sizeof(Replacement)));
  if (redactor.slots == nullptr || redactor.payload == nullptr ||
      redaction.replacements == nullptr) {
    Fail(&redactor, "not enough memory");
  } else {
    redactor.redacted = redactor.payload + payloadBytes;
    redactor.done = redactor.redacted + payloadBytes;
    if (TakeLines(&redactor, text, size)) {
      redactor.replacing = true;
      TakeLines(&redactor, text, size);
    }
  }
  free(redactor.slots);
  free(redactor.payload);
  return redaction;
}

void ReleaseRedaction(Redaction* redaction) {
  free(redaction->replacements);
  redaction->replacements = nullptr;
}
