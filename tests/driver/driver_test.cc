#include "driver/driver.h"

#include <gtest/gtest.h>

namespace kcp {
namespace {

TEST(OutOfMemoryMessage, NamesTheStageAndBlamesTheNetworkSizeOnlyForANetworkStage) {
  EXPECT_EQ(Out_of_memory_message({"extracting the communities at k=4", true}),
            "ERROR: out of memory while extracting the communities at k=4; the network is too "
            "large for this machine's memory.");
  EXPECT_EQ(Out_of_memory_message({"preparing the results directory", false}),
            "ERROR: out of memory while preparing the results directory.");
  EXPECT_EQ(Out_of_memory_message(RunStage{}), "ERROR: out of memory while starting.");
}

}  // namespace
}  // namespace kcp
