#include "main/front_end.h"

int main(int argc, char* argv[]) {
  return runFrontEnd(argc, argv);
}
