// Readable descriptions of value objects, as text lines or JSON.
#pragma once

#include <gvlib/gvlib.h>

#include <ostream>
#include <string>

namespace gvtool {

/// One object as readable text: its class, then its value ("long -15").
std::string Describe(CGVObject& obj);
/// One object as a JSON object ({"class": "long", "value": -15}).
std::string DescribeJson(CGVObject& obj);
/// The same written to `out` as it goes, so a large array is never held twice.
void DescribeTo(std::ostream& out, CGVObject& obj, bool json);
void DescribeTextTo(std::ostream& out, CGVObject& obj);
void DescribeJsonTo(std::ostream& out, CGVObject& obj);
/// The class names the tool accepts (string, long, buffer, date, long-array,
/// string-array, array); null for an unknown name.
CGVObject* NewOfClass(std::string const& name);
/// The class name of an object.
std::string ClassOf(CGVObject& obj);

}  // namespace gvtool
