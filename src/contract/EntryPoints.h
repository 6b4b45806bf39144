#pragma once

#include "contract/Cinterface.h"
#include "contract/Schema.h"

#include <memory>

namespace contract {

/// Makes objects of one plug-in class.
class ClassFactory {
public:
    ClassFactory() = default;
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;
    virtual ~ClassFactory() = default;

    virtual std::unique_ptr<PluginClass> createInstance() = 0;
};

/// Identifier under which the component's class stands in the host's component registry.
inline constexpr const char* copiaDistintaClassId = "QZUO_COPIADISTINTA.CLSQZ_COPIADISTINTA";

// The functions that a component's shared library exports, by these names and with C linkage.
//
// A host asks for the version before it calls any of the others: the interfaces are C++ classes, and a library built
// against other ones must not be called.
//
// The registry is a text file of the user's: the one that the environment's DISTINTE_REGISTRY names, else
// "distinte/components" in the user's data folder ($XDG_DATA_HOME, else ~/.local/share). Each line is a class
// identifier, a tab and the absolute path of the library. Writing replaces the file as a whole, or leaves it as it was;
// who writes holds a lock (flock) on the file of the same name with ".lock" at its end, and keeps every other line.

/// Version of the interfaces in this folder: raised by one whenever one of them changes.
inline constexpr int contractVersion = 1;

/// The version against which the library was built.
using ContractVersionFunction = int();

/// Adds or replaces the component's line. 0 on success, -1 when the file could not be written.
using DllRegisterServerFunction = int();
/// Removes the component's line; a missing line or file is success. 0 or -1.
using DllUnregisterServerFunction = int();
/// The factory of a class, or nothing for an identifier that is not the component's. Owned by the library.
using DllGetClassObjectFunction = ClassFactory*(const char* classId);
/// 0 when no object of the component exists any more, 1 otherwise.
using DllCanUnloadNowFunction = int();
/// The database that the component works on.
using DatabaseSchemaFunction = const Schema*();

} // namespace contract
