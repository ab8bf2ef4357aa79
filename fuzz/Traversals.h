// SPDX-License-Identifier: MIT
#ifndef TRAVERSALS_H
#define TRAVERSALS_H

#include <QByteArray>

#include <array>

// A traversal does with any bytes what the programs of this family do with what comes from outside, and
// requires what has to hold whatever the bytes are (Properties.h). Each is the whole work of one fuzzer
// (fuzz_<topic>) and of the test that repeats the seeds and all that fuzzers ever found (tst_fuzz_inputs).
void traverseCatalogueLookups(const QByteArray &input);
void traverseCommandLine(const QByteArray &input);
void traverseDateTimes(const QByteArray &input);
void traverseDeviceList(const QByteArray &input);
void traverseDeviceRecords(const QByteArray &input);
void traverseDirectoryPaths(const QByteArray &input);
void traverseDirectoryTrees(const QByteArray &input);
void traverseDurationTexts(const QByteArray &input);
void traverseFixedStrings(const QByteArray &input);
void traverseInventoryList(const QByteArray &input);
void traverseIpv6Text(const QByteArray &input);
void traverseNumberTexts(const QByteArray &input);
void traverseOneTimeCode(const QByteArray &input);
void traverseParameterList(const QByteArray &input);
void traverseSettings(const QByteArray &input);
void traverseTar(const QByteArray &input);
void traverseValueBytes(const QByteArray &input);
void traverseValueStream(const QByteArray &input);
void traverseValueText(const QByteArray &input);
void traverseValueVariant(const QByteArray &input);
void traverseVersionTexts(const QByteArray &input);

// Local time is this zone's, by its rules: hours that are missing or come twice are met on every machine.
constexpr const char *localZone = "CET-1CEST,M3.5.0,M10.5.0/3";

using Traverse = void (*)(const QByteArray &input);

struct Traversal
{
    // Names the fuzzer, the directories of inputs below seeds/ and reproducers/, and the dictionary.
    const char *topic = "";
    Traverse traverse = nullptr;
    // What Qt keeps in caches of its own makes the search for leaks after each input useless; it is made at
    // the end.
    bool fillsCaches = false;
    // In bytes, of those that the fuzzer makes.
    int longestInput = 65536;
};

constexpr std::array<Traversal, 21> traversals{{
    {"catalogue_lookups", traverseCatalogueLookups},
    {"command_line", traverseCommandLine, true},
    {"date_times", traverseDateTimes, true},
    {"device_list", traverseDeviceList},
    {"device_records", traverseDeviceRecords},
    {"directory_paths", traverseDirectoryPaths, true},
    {"directory_trees", traverseDirectoryTrees, true},
    {"duration_texts", traverseDurationTexts, true},
    {"fixed_strings", traverseFixedStrings},
    {"inventory_list", traverseInventoryList, true},
    {"ipv6_text", traverseIpv6Text, true},
    {"number_texts", traverseNumberTexts},
    {"one_time_code", traverseOneTimeCode},
    {"parameter_list", traverseParameterList, true},
    // QSettings makes room anew for each character that it writes, which a sanitizer turns into a copy.
    {"settings", traverseSettings, true, 8192},
    {"tar", traverseTar},
    {"value_bytes", traverseValueBytes},
    {"value_stream", traverseValueStream},
    {"value_text", traverseValueText},
    {"value_variant", traverseValueVariant},
    {"version_texts", traverseVersionTexts},
}};

#endif // TRAVERSALS_H
