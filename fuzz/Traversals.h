// SPDX-License-Identifier: MIT
#ifndef TRAVERSALS_H
#define TRAVERSALS_H

#include <QByteArray>

#include <array>

// A traversal does with any bytes what the programs of this family do with what comes from outside, and
// requires what has to hold whatever the bytes are (Properties.h). Each is the whole work of one fuzzer
// (fuzz_<topic>) and of the test that repeats the seeds and all that fuzzers ever found (tst_fuzz_inputs).
void traverseSettings(const QByteArray &input);
void traverseTar(const QByteArray &input);
void traverseValueBytes(const QByteArray &input);
void traverseValueText(const QByteArray &input);
void traverseValueStream(const QByteArray &input);
void traverseValueVariant(const QByteArray &input);
void traverseFixedStrings(const QByteArray &input);
void traverseNumberTexts(const QByteArray &input);

using Traverse = void (*)(const QByteArray &input);

struct Traversal
{
    // Names the fuzzer, the directories of inputs below seeds/ and reproducers/, and the dictionary.
    const char *topic;
    Traverse traverse;
    // What Qt keeps in caches of its own makes the search for leaks after each input useless; it is made at
    // the end.
    bool fillsCaches = false;
};

constexpr std::array<Traversal, 8> traversals{{
    {"settings", traverseSettings, true},
    {"tar", traverseTar},
    {"value_bytes", traverseValueBytes},
    {"value_text", traverseValueText},
    {"value_stream", traverseValueStream},
    {"value_variant", traverseValueVariant},
    {"fixed_strings", traverseFixedStrings},
    {"number_texts", traverseNumberTexts},
}};

#endif // TRAVERSALS_H
