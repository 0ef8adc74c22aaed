// The compiler needs a program with which it compiles the headers that all tests share.
int main() { return 0; }
