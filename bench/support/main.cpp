#include "support/comparison.h"

int main(int argc, char** argv) { return zelutil::bench::runComparisons(argc, argv); }
