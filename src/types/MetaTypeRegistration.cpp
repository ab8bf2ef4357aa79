// SPDX-License-Identifier: MIT
#include "MetaTypeRegistration.h"

#include <QtGlobal>

void ensureMetaTypes()
{
    static const bool registered = [] {
        registerRecordTypes();
        registerFixedStringTypes();
        return true;
    }();
    Q_UNUSED(registered)
}

namespace {

// At load: a stream may hold a record before the program has made one.
const bool registeredAtLoad = [] {
    ensureMetaTypes();
    return true;
}();

} // namespace
