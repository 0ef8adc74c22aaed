# : Format all C and C++ files of the project in place
need git clang-format
say "Formatting"
projectFiles '*.h' '*.cpp' '*.c' | xargs clang-format -i
git diff --stat -- '*.h' '*.cpp' '*.c'
