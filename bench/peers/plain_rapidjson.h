#ifndef ZELUTIL_BENCH_PLAIN_RAPIDJSON_H
#define ZELUTIL_BENCH_PLAIN_RAPIDJSON_H

// RapidJSON as it comes, in a namespace of its own: the library in static form holds it with vector instructions.
#define RAPIDJSON_NAMESPACE plain_rapidjson
#define RAPIDJSON_NAMESPACE_BEGIN namespace plain_rapidjson {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#endif
