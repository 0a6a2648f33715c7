#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "app/console/print.h"
#include "simulator/adapter.h"
#include "simulator/builtin_scenario.h"
#include "simulator/redact/payload_rows.h"
#include "simulator/redact/redact.h"

namespace {

using Texts = std::vector<std::string>;

std::string Hex(const std::string& bytes) {
  std::string hex;
  for (const unsigned char byte : bytes) {
    hex += "0123456789abcdef"[byte >> 4];
    hex += "0123456789abcdef"[byte & 15];
  }
  return hex;
}

// The bytes whose hex digits begin at `at`.
std::string Bytes(const std::string& text, size_t at) {
  std::string bytes;
  for (; at + 1 < text.size() && isxdigit(static_cast<unsigned char>(text[at])) != 0; at += 2) {
    bytes += static_cast<char>(std::stoi(text.substr(at, 2), nullptr, 16));
  }
  return bytes;
}

std::string Wide(const std::string& text) {
  std::string wide;
  for (const char character : text) wide += {character, 0};
  return wide;
}

// The report, followed by the counts of what was left out; or the error.
std::string Redact(const Texts& texts, const Texts& words = {}, bool keepTexts = false) {
  const auto views = [](const Texts& strings) {
    std::vector<TextView> list;
    for (const std::string& text : strings) {
      list.push_back({text.data(), static_cast<uint32_t>(text.size())});
    }
    return list;
  };
  const auto count = static_cast<uint32_t>(texts.size());
  Redaction redaction = RedactTraces(views(texts).data(), count, views(words).data(),
                                     static_cast<uint32_t>(words.size()), keepTexts);
  std::string report(redaction.report, redaction.size);
  if (redaction.error.what != nullptr) {
    report = std::to_string(redaction.errorText) + ":" + std::to_string(redaction.error.line) +
             ": " + redaction.error.what;
  } else if (redaction.requestsLeftOut + redaction.commentsLeftOut > 0) {
    report +=
        std::to_string(redaction.requestsLeftOut) + " " + std::to_string(redaction.commentsLeftOut);
  }
  ReleaseRedaction(&redaction);
  return report;
}

// A line of a trace; both payloads are filled up with zeros.
std::string Line(const std::string& oid, size_t length, std::string sent, std::string answered,
                 const std::string& outcome = "ok") {
  sent.resize(2 * length, '0');
  answered.resize(2 * length, '0');
  return oid + " len=" + std::to_string(length) + " if 0:" + sent + " " + outcome +
         " 0:" + answered + " times=1\n";
}

const std::string Unserved = "# no rule and no register served this request; nearest is line 3, ";

TEST(Redact, KeepsWhatIsListed) {
  const std::string name = "00000000" + Hex("Home");
  const std::string found = name + std::string(56, '0') + "b27d4019ce05" + "2422";
  const Texts traces = {
      "\xEF\xBB\xBFopen ok\r\n" + Line("0xFFFCF016", 68, name, found) +
          Line("0xFFFCF001", 8, "00000000", "0000000078563412") +
          Line("0xFFFCF001", 8, "9010037478563412", "9010037400001210") +
          Line("0xFFFCF01E", 32, "0100000035000000" + std::string(18, '0') + "77",
               "0100000035000000" + std::string(8, '0') + std::string(32, '0') + "0708") +
          Line("0xFFFCF10A", 56, std::string(48, '0') + "05", "010000000200000078563412") +
          Line("0xFFFCF10A", 56, std::string(48, '0') + "05", std::string(48, '0') + "05",
               "error=31") +
          "close error=6\n",
      Line("0x0FFFC206", 7, "03b27d4019ce05", "03ffffffffffff", "error=5") +
          Line("0x0FFFC206", 7, "0224012003aaaa", "") +
          Line("0xFFFCF108", 56, "07000000" + Hex("TxopLimit") + "00ff", "") +
          Line("0xFFFCF102", 4096, "", Hex("Peer:\tHome-7\n\xC3\xA9\x01") + "000041") +
          Line("0xFFFCF100", 3, "", "000a00") + "0xFFFCF100 len=0 ok times=1 returned=9\n"};
  EXPECT_EQ(Redact(traces),
            "open ok\n" +
                Line("0xFFFCF016", 68, "00000000" + Hex("aaaa"),
                     "00000000" + Hex("aaaa") + std::string(56, '0') + "0200000000012422") +
                Line("0xFFFCF001", 8, "00000000", "000000000100005a") +
                Line("0xFFFCF001", 8, "9010037478563412", "9010037400001210") +
                Line("0xFFFCF01E", 32, "0100000035000000" + std::string(18, '0') + "35",
                     "010000003500000000000000303132333435363738393a3b3c3d3e3f0708") +
                Line("0xFFFCF10A", 56, std::string(48, '0') + "05", "780000000200005a0100005a") +
                Line("0xFFFCF10A", 56, std::string(48, '0') + "05", std::string(48, '0') + "05",
                     "error=31") +
                "close error=6\n" +
                Line("0x0FFFC206", 7, "03020000000001", "03ffffffffffff", "error=5") +
                Line("0x0FFFC206", 7, "02240120037878", "") +
                Line("0xFFFCF108", 56, "07000000" + Hex("TxopLimit") + "0078", "") +
                Line("0xFFFCF102", 4096, "", Hex("xxxx:\txxxx-0\nxxx") + "000078") +
                Line("0xFFFCF100", 3, "", "007800") + "0xFFFCF100 len=0 ok times=1 returned=9\n");
}

TEST(Redact, LeavesOutUnknownRequestsAndComments) {
  const std::string unknown = "0xFFFCF111 len=1 if 0:00 ok 0:00 times=1\n" + Unserved +
                              "which is used up\n" + "0xFFFCF105 len=1 error=50 times=1\n";
  EXPECT_EQ(Redact({"0xFFFCF105 len=1 if 0:00 ok 0:00 times=1\n" + Unserved +
                    "which is used up\n# sent: 0xFFFCF111 len=1 if 0:41\n# Home\n" + Unserved +
                    "which asks for home\nopen ok # Home\n# sent: 0xFFFCF105 len=8 if 0:41\n"}),
            "open ok\n2 4");
  const std::string kept = "0xFFFCF01D len=4 if 0:00000000 error=50 0:00000000 times=1\n" +
                           Unserved + "which asks for len=8\n" + Unserved + "which asks for ";
  const std::string end = " at offset 2\n# calls left out, for which there was no room: 12\n";
  EXPECT_EQ(Redact({kept + "b2" + end + "# sent: 0xFFFCF105 len=8 if 0:b27d4019ce050102\n" +
                    "# sent: 0xFFFCF006 len=4096\n"}),
            kept + "xx" + end + "# sent: 0xFFFCF105 len=8 if 0:0200000000017878\n" +
                "# sent: 0xFFFCF006 len=4096\n");
}

TEST(Redact, RefusesWhatNoTraceHolds) {
  const std::pair<const char*, const char*> cases[] = {
      {"register 1 2", "not a line of a trace"},
      {"0xFFFCF11D len=4 ok", "not a line of a trace"},
      {"0xFFFCF105 len=1 if 0:00 ok 0:00", "not a line of a trace"},
      {"0xFFFCF105 len=1 if 0:00 ok times=1", "not a line of a trace"},
      {"0xFFFCF105 len=2 if 0:00 ok 0:00 times=1", "not a line of a trace"},
      {"0xFFFCF105 len=1 if 1:00 ok 1:00 times=1", "not a line of a trace"},
      {"0xFFFCF105 len=4 if 0:00*4 ok 0:00*4 times=1", "not a line of a trace"},
      {"0xFFFCF105 len=1 if 0:00 ok 0:00 0:01 times=1", "not a line of a trace"},
      {"\r\r", "unknown statement"},
      {"5", "outcome expected"}};
  for (const auto& [line, what] : cases) {
    EXPECT_EQ(Redact({"open ok", std::string("open ok\n") + line}), std::string("1:2: ") + what);
  }
}

// What becomes of the text as the answer to `get_wfd`, in a trace from which a few values are
// known.
std::string Kept(const std::string& text, const Texts& words) {
  const std::string trace = Line("0xFFFCF016", 68, "00000000" + Hex("Home-5G"), "") +
                            Line("0xFFFCF016", 68, "00000000" + Hex("Caf\xC3\xA9"), "") +
                            Line("0xFFFCF016", 68, "00000000" + Hex("AP"), "") +
                            Line("0xFFFCF105", 8, "", "b20d4009ce05") +
                            Line("0xFFFCF001", 8, "", "00000000ef0d0a00");
  const std::string report = Redact({trace + Line("0xFFFCF102", 4096, "", Hex(text))}, words, true);
  return Bytes(report, report.rfind(" 0:") + 3).substr(0, text.size());
}

TEST(Redact, ReplacesEveryFormOfAKnownValueInTextsThatStay) {
  const std::pair<std::string, std::string> cases[] = {
      {"SSID: Home-5G, BSSID: b2:0d:40:09:ce:05", "SSID: aaaaaaa, BSSID: 02:00:00:00:00:01"},
      {"roamed from HOME5G to home 5g", "roamed from aaaaaa to aaaaaaa"},
      {"B20D.4009.CE05 b2:d:40:9:ce:5", "0200.0000.0001 00:0:00:0:00:1"},
      {"  B2-0D-40-09-CE-05\tb20d4009ce05", "  02-00-00-00-00-01\t020000000001"},
      {"an AP, apart: AP", "an aa, apart: aa"},
      {"0x000A0DEF 0xa0def", "0x5a000001 0x00001"},
      {"caf\xC3\xA9 CAF\xC3\x89", "aaaaa aaaaa"},
      {Wide("Home-5G") + Wide("b2:0d:40:09:ce:05"), Wide("aaaa-aa") + Wide("02:00:00:00:00:01")},
      {std::string("C\0A\0F\0\xC9\0", 8), std::string("a\0a\0a\0a\0", 8)},
      {"psk=Secret123; s e c r e t 1 2 3", "psk=aaaaaaaaa; a a a a a a a a a"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(Kept(text, {"secret 123"}), expected);
}

// Letters and digits only, in lower case: separators, zeros of 16-bit texts and case are gone.
std::string Shape(const std::string& bytes) {
  std::string shape;
  for (const char byte : bytes) {
    if (isalnum(static_cast<unsigned char>(byte)) != 0) shape += static_cast<char>(tolower(byte));
  }
  return shape;
}

void ExpectNothingOf(const std::string& report, const Texts& values) {
  std::string bytes;
  for (size_t i = 0; i + 1 < report.size(); i++) {
    if (report[i] == ':') bytes += Bytes(report, i + 1);
  }
  for (const std::string& value : values) {
    EXPECT_EQ(bytes.find(value), std::string::npos) << Hex(value);
    if (isalnum(static_cast<unsigned char>(value[0])) == 0) continue;
    EXPECT_EQ(Shape(bytes).find(value), std::string::npos) << value;
  }
}

// The built-in scenario answers every request. Each part of an answer that is not kept then holds
// all that is private, in many forms.
TEST(Redact, TellsNothingOfAWholeConversation) {
  const std::string address = "\xB2\x0D\x40\x09\xCE\x05";
  const std::string number = "\xEF\xBE\xAD\x3A";
  const std::string text =
      "HomeNet HOME-NET b2:0d:40:09:ce:05 B2-D-40-9-CE-5 b20d.4009.ce05 0x3AADBEEF psk Secret123 " +
      Wide("homenet Secret123 b20d4009ce05 3aadbeef");
  const Texts values = {"homenet",  "secret123", "b20d4009ce05", "b2d409ce5",
                        "3aadbeef", address,     number};
  std::string conversation;
  static Adapter adapter;
  std::vector<uint32_t> served(BuiltinScenario.ruleCount);
  AdapterStart(&adapter, &BuiltinScenario, served.data());
  uint32_t asked = 0;
  for (const PayloadRow& row : PayloadRows) {
    std::string sent(row.length == AnyLength ? 16 : row.length, 0);
    if (row.oid == OidChanPref) sent[0] = 4;
    std::string answered = sent;
    auto* bytes = reinterpret_cast<uint8_t*>(answered.data());
    const auto length = static_cast<uint32_t>(sent.size());
    const RequestResult result = AdapterRequest(&adapter, row.oid, bytes, length);
    asked += result.unserved ? 0 : 1;
    for (const Stretch& stretch : row.stretches) {
      std::string planted = text;
      if (stretch.size == 0 || stretch.content == Content::Keep) continue;
      if (stretch.size == 6) planted = address;
      if (stretch.content == Content::Register || stretch.content == Content::Index) {
        planted = number + number;
      }
      if (stretch.content == Content::Name) planted = "HomeNet";
      if (stretch.content == Content::Efuse) planted = address + address + number;
      planted.resize(stretch.size);
      answered.replace(stretch.offset, stretch.size, planted);
    }
    char oid[11];
    BoundedPrintf(oid, sizeof(oid), "0x%08X", row.oid);
    conversation += Line(oid, length, Hex(sent), Hex(answered));
  }
  EXPECT_GT(asked, 60U);
  ExpectNothingOf(Redact({conversation}, {"secret123"}), values);
  ExpectNothingOf(Redact({conversation}, {"secret123"}, true), values);
}

}  // namespace
