#include "driver/driver.h"

int main(int argc, char** argv) {
  return kcp::Run(argc, argv);
}
