#include <malloc.h>

#include "core/ordered_tasks.h"
#include "driver/driver.h"

int main(int argc, char** argv) {
  // One heap for every thread: the stages of different k allocate and free large lists in turn,
  // and a heap per thread keeps what one thread freed out of another's reach (a quarter more
  // peak memory on two threads, for no gain in speed).
  mallopt(M_ARENA_MAX, 1);
  // As many threads as processors the run may use: a CPU set given to the process is respected.
  return kcp::Run(argc, argv, kcp::Usable_processors());
}
