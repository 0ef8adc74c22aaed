// A module that does nothing. The types are the system's HINSTANCE, DWORD, LPVOID and BOOL.
int entryPoint(void* module, unsigned long reason, void* reserved);

int entryPoint(void* module, unsigned long reason, void* reserved) {
    (void)module;
    (void)reason;
    (void)reserved;
    return 1;
}
