#include "core/ordered_tasks.h"
#include "driver/driver.h"

int main(int argc, char** argv) {
  // As many threads as processors the run may use: a CPU set given to the process is respected.
  return kcp::Run(argc, argv, kcp::Usable_processors());
}
