// `export_rssi_report`: the signal check, written into an XML file.
#include <cstdio>
#include <cstring>

#include "app/console/print.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "commands/rssi_country/rssi_check.h"
#include "commands/rssi_country/rssi_country_commands.h"
#include "platform/clock.h"

namespace {

constexpr char ParameterError[] = "Error: Parameters are not correct!!";
constexpr int CodeParameters = 1;
constexpr int CodeNetworkNotFound = 2;
constexpr int CodeRequest = 3;

// The arguments as the error file shows them. They are empty if the first word is not recognised.
struct ArgumentEcho {
  char test[100];
  char ssid[100];
  char threshold[100];
  char path[100];
};

// Copies at most `limit` characters of `text`. They must fit into `target` with a zero.
void EchoText(char (&echo)[100], const char* text, size_t limit) {
  const size_t whole = strlen(text);
  const size_t length = whole < limit ? whole : limit;
  if (length >= sizeof(echo)) EndAfterFatalError();
  memcpy(echo, text, length);
  echo[length] = 0;
}

// After a band keyword each value shows the argument before it, cut to its own argument's length.
// Programs that read the error file expect that.
void EchoArguments(int argc, char** argv, ArgumentEcho* echo) {
  char** own = argv + argc - 3;  // SSID, threshold, path
  char** shown = argc == 7 ? own - 1 : own;
  EchoText(echo->test, "1", 1);
  EchoText(echo->ssid, shown[0], strlen(own[0]));
  EchoText(echo->threshold, shown[1], strlen(own[1]));
  EchoText(echo->path, shown[2], strlen(own[2]));
}

FILE* OpenReport(const char* path) {
  FILE* file = fopen(path, "w");
  if (file == nullptr) EndAfterFatalError();
  return file;
}

void WriteHead(FILE* file) {
  FilePrintf(file, "<?xml version=\"1.0\"?>\n<Results>\n");
}

void WriteResultStart(FILE* file, const char* name, int status, const CalendarTime& now) {
  FilePrintf(file,
             "  <Result name=\"%s\" status=\"%d\" timestamp=\"%02d/%02d/%4d %02d:%02d:%02d\">\n",
             name, status, now.month, now.day, now.year, now.hour, now.minute, now.second);
}

void WriteText(FILE* file, const char* name, const char* value) {
  FilePrintf(file, "    <Data name=\"%s\" value=\"%s\"/>\n", name, value);
}

void WriteNumber(FILE* file, const char* name, int value) {
  FilePrintf(file, "    <Data name=\"%s\" value=\"%d\"/>\n", name, value);
}

void WriteProduct(FILE* file) {
  WriteText(file, "Vendor", "Velora");
  WriteText(file, "Module", "XC6210");
}

void WriteResultEnd(FILE* file) {
  FilePrintf(file, "  </Result>\n");
}

void WriteTail(FILE* file) {
  FilePrintf(file, "</Results>\n");
}

void WriteAntenna(FILE* file, const char* name, int average, bool passes, const CalendarTime& now) {
  WriteResultStart(file, name, passes ? 1 : 0, now);
  WriteProduct(file);
  WriteNumber(file, "RSSI", average);
  WriteResultEnd(file);
}

// Returns 0 when both antennas pass, else 1. `test` is 1, or 6 when a band was given.
int WriteResultFile(const char* path, int test, int negatedThreshold,
                    const RssiCheckRequest& reply) {
  const int subAverage = AverageRssi(reply.acSubRssi);
  const int mainAverage = AverageRssi(reply.acMainRssi);
  const bool subPasses = RssiPasses(subAverage, negatedThreshold);
  const bool mainPasses = RssiPasses(mainAverage, negatedThreshold);

  FILE* file = OpenReport(path);
  const CalendarTime now = LocalCalendarTime(CurrentTime());
  WriteHead(file);
  WriteResultStart(file, "Arguments", 1, now);
  WriteNumber(file, "Test", test);
  FilePrintf(file, "    <Data name=\"SSID\" value=\"%.*s\"/>\n",
             static_cast<int>(sizeof(reply.acSsid)), reply.acSsid);
  WriteNumber(file, "THRESHOLD", negatedThreshold);
  WriteText(file, "xmlout", path);
  WriteResultEnd(file);
  WriteAntenna(file, "Antenna1", subAverage, subPasses, now);
  WriteAntenna(file, "Antenna2", mainAverage, mainPasses, now);
  WriteTail(file);
  (void)fclose(file);
  return subPasses && mainPasses ? 0 : 1;
}

// The Arguments element is not closed. Programs that read the file expect that.
int WriteErrorFile(const ArgumentEcho& echo, const char* description, int code) {
  FILE* file = OpenReport("error.xml");
  const CalendarTime now = LocalCalendarTime(CurrentTime());
  WriteHead(file);
  WriteResultStart(file, "Arguments", 0, now);
  WriteText(file, "Test", echo.test);
  WriteText(file, "SSID", echo.ssid);
  WriteText(file, "THRESHOLD", echo.threshold);
  WriteText(file, "xmlout", echo.path);
  WriteResultStart(file, "Failure", 0, now);
  WriteProduct(file);
  WriteText(file, "ErrorDescription", description);
  WriteNumber(file, "ErrorCode", code);
  WriteResultEnd(file);
  WriteTail(file);
  (void)fclose(file);
  return 1;
}

}  // namespace

int HandleExportRssiReportCommand(int argc, char** argv) {
  ArgumentEcho echo = {};
  if ((argc != 6 && argc != 7) || !EqualsIgnoreCase(argv[2], "rssi")) {
    return WriteErrorFile(echo, ParameterError, CodeParameters);
  }
  EchoArguments(argc, argv, &echo);

  int threshold = 0;
  if (!ParseRssiThreshold(argv[argc - 2], &threshold)) {
    return WriteErrorFile(echo, "RSSI threshold range: 0 ~ 127", CodeParameters);
  }
  // Unlike `rf`, the report does not scan the 6 GHz band by itself.
  RssiCheckRequest request = {};
  if (argc == 7 &&
      (!RssiBandFromKeyword(argv[3], &request.ucBand) || request.ucBand == RssiBand6G)) {
    return WriteErrorFile(echo, ParameterError, CodeParameters);
  }
  CopyText(request.acSsid, sizeof(request.acSsid), argv[argc - 3]);
  if (!OidRequest(OidRssiCheck, &request)) {
    if (DeviceError() == ErrorNetworkNotFound) {
      return WriteErrorFile(echo, "Can't find SSID", CodeNetworkNotFound);
    }
    return WriteErrorFile(echo, "Error in DeviceIoControl", CodeRequest);
  }
  return WriteResultFile(argv[argc - 1], argc == 7 ? 6 : 1, -threshold, request);
}
