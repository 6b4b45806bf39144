// A component built against another version of the contract: whatever else of it is called ends the program.

#include "contract/EntryPoints.h"

#include <cstdlib>

extern "C" {

#ifdef OTHER_VERSION
int ContractVersion() {
    return contract::contractVersion + OTHER_VERSION;
}
#endif

int DllRegisterServer() {
    std::abort();
}

contract::ClassFactory* DllGetClassObject(const char*) {
    std::abort();
}

const contract::Schema* DatabaseSchema() {
    std::abort();
}
}
