#include "import/encoder_complaints.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(EncoderComplaints, TellsWhatCouldNotBeWritten) {
  // ffmpeg 5.1 ends with status 0 after these.
  EXPECT_EQ(writing_trouble_in("frame=1 size=1kB\r\n"
                               "Error writing trailer of out/a.ac3: No space left on device\r\n"),
            "the disk is full");
  EXPECT_EQ(writing_trouble_in("Error closing file out/a.ac3: No space left on device"),
            "the disk is full");
  EXPECT_EQ(writing_trouble_in(" av_interleaved_write_frame(): Input/output error \n"),
            "ffmpeg could not write all of it: Input/output error");
  EXPECT_EQ(writing_trouble_in("[out#0/ac3 @ 0x55cb] Error muxing a packet\n"),
            "ffmpeg could not write all of it");
}

TEST(EncoderComplaints, WhatIsReadBadlyIsNoneOfThem) {
  EXPECT_EQ(writing_trouble_in(""), "");
  EXPECT_EQ(writing_trouble_in("[matroska,webm @ 0x55cb] File ended prematurely\n"
                               "a film called Error writing trailer: of 1999\n"
                               "frame=  178 fps=0.0 q=2.6 Lsize=    4168kB speed=8.6x\n"),
            "");
}

}  // namespace
}  // namespace corvane
