#include <gtest/gtest.h>

#include <string>

#include "simulator/redact/redact.h"

namespace {

std::string Hex(const std::string& bytes) {
  std::string hex;
  for (const char each : bytes) {
    const auto byte = static_cast<uint8_t>(each);
    hex += "0123456789abcdef"[byte >> 4];
    hex += "0123456789abcdef"[byte & 15];
  }
  return hex;
}

std::string Redact(std::string text) {
  Redaction redaction = RedactText(text.data(), static_cast<uint32_t>(text.size()));
  const ScenarioError error = redaction.error;
  if (error.what != nullptr) text = std::to_string(error.line) + ": " + error.what;
  ReleaseRedaction(&redaction);
  return text;
}

// A trace with names of four letters and addresses in their places.
std::string Trace(const std::string& name, const std::string& other, const std::string& address,
                  const std::string& written, const std::string& value, const std::string& fuse) {
  const auto find = [](const std::string& ssid, const std::string& bssid) {
    return "00000000" + Hex(ssid + std::string(28, 0)) + bssid + std::string(52, '7');
  };
  const std::string zeros(12, '0');
  return "open ok\n0xFFFCF016 len=68 if 0:" + find(name, zeros) + " ok 0:" + find(name, address) +
         "\n0xFFFCF016 len=68 error=31 0:" + find(other, zeros) +
         "\n# a comment\n0xFFFCF102 ok 0:" +
         Hex("SSID = " + name + " \nBSSID: " + written + "\n\"ESSID [1]\"=\"" + name + "\", " +
             name + "\nxSSID(2): " + other) +
         "00" + address + "\n0x0FFFC206 if 0:03" + address + " ok 0:02112233445566" +
         "\n0xFFFCF002 if 0:08020000" + value + " ok 0:0802000000000000\n0xFFFCF001 ok 0:04020000" +
         value + "\n0xFFFCF001 ok 0:9010037400001210\n0xFFFCF01E ok 0:" + std::string(24, '0') +
         fuse + "0102\n";
}

TEST(Redact, ReplacesTheSameValueByTheSameStandIn) {
  EXPECT_EQ(Redact(Trace("Home", "W\"rk", "b27d4019ce05", "B2-7D-40-19-CE-05", "78563412",
                         "a8ff0000b27d4019ce050000000000a8")),
            Trace("aaaa", "aaab", "020000000001", "02-00-00-00-00-01", "0100005a",
                  "01020000020000000001000000000001"));
}

TEST(Redact, RefusesWhatNoTraceHolds) {
  for (const char* line : {"register 1 2", "5 ok", "0xFFFCF105\tok 0:02", "0xFFFCF105 ok 0:\"a\"",
                           "0xFFFCF105 ok 1:02", "0xFFFCF105 ok 0:02#", "0xFFFCF105 ok 0:02*6"}) {
    EXPECT_EQ(Redact(std::string("open ok\n") + line), "2: not a line of a trace") << line;
  }
  EXPECT_EQ(Redact("5"), "1: outcome expected");
}

}  // namespace
