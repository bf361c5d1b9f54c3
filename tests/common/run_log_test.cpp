#include "common/run_log.h"

#include <gtest/gtest.h>

// system() hands back a wait status, not the exit status the log line names.
TEST(RunLog, CommandStatusDecodesTheWaitStatus) {
  EXPECT_EQ(commandStatus("sudo ifup wlan0", 0), "sudo ifup wlan0 exited with status 0");
  EXPECT_EQ(commandStatus("sudo ifup wlan0", 1 << 8), "sudo ifup wlan0 exited with status 1");
  EXPECT_EQ(commandStatus("ifconfig eth0 up", 9), "ifconfig eth0 up was killed by signal 9");
  EXPECT_EQ(commandStatus("ifconfig eth0 up", -1), "ifconfig eth0 up could not be started");
}
