// The driver's checks that Wine does not reach.
#include <gtest/gtest.h>

#include <cstdlib>

#include "simulator/windows/driver_front.h"
#include "simulator/windows/nt_status.h"

TEST(DriverFront, OpensOnTheChannelsTermsOnly) {
  static DriverFront front;
  ASSERT_TRUE(FrontStart(&front, {malloc, free}));
  const OpenTerms opening[] = {{0x0012019F, 0, 0x05000060, 0x80},
                               {0xC0000000, 0, 0x05000060, 0x80},
                               {0x0012019F, 0, 0x60, 0}};  // Wine's
  for (const OpenTerms& terms : opening) EXPECT_FALSE(FrontOpen(&front, terms).failed);
  const OpenTerms refused[] = {
      {0x001F01FF, 0, 0x05000060, 0x80}, {0x10000000, 0, 0x05000060, 0x80},  // GENERIC_ALL
      {0x00120089, 0, 0x05000060, 0x80}, {0x00120116, 0, 0x05000060, 0x80},  // read or write only
      {0x0012019F, 1, 0x05000060, 0x80}, {0x0012019F, 0, 0x03000060, 0x80},
      {0x0012019F, 0, 0x05000060, 0},    {0x0012019F, 0, 0x60, 0x80},
      {0x0012019F, 0, 0x05000040, 0x80}, {0x0012019F, 0, 0x05000062, 0x80}};  // with flags
  for (const OpenTerms& terms : refused) EXPECT_EQ(FrontOpen(&front, terms).error, 87U);
  EXPECT_EQ(front.opened, 3U);

  const uint32_t traced = front.trace.bytes;
  const uint32_t oid = 1;
  // The payload is not looked at: there is none.
  const FrontReply reply = FrontRequest(&front, IOCTL_NDIS_QUERY_GLOBAL_STATS, &oid, sizeof(oid),
                                        nullptr, MaxPayloadBytes + 1);
  EXPECT_TRUE(reply.failed && reply.error == 87 && reply.returned == 0);
  EXPECT_TRUE(front.trace.bytes == traced && front.requests == 0);
  FrontStop(&front);
}

TEST(NtStatus, CarriesCodesAbove16Bits) {
  EXPECT_EQ(StatusOfError(0xA0000001, true), 0xA0000001);
  EXPECT_EQ(StatusOfError(0xE0000001, true), 0xE0000001);
  EXPECT_EQ(StatusOfError(65536, true), 0x8007001F);
  EXPECT_EQ(StatusOfError(65536, false), 0xC0000001);
  EXPECT_EQ(StatusOfError(0xFFFFFFFF, true), 0x8007001F);
  EXPECT_EQ(StatusOfError(0xFFFFFFFF, false), 0xC0000001);
}
