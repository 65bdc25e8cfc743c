// Builds the trace line of a call: the member's name and its arguments,
// each already in its default text, as "Name(a, b, c)".
#pragma once

#include <initializer_list>
#include <string>

std::string CallText(const std::string& Name, std::initializer_list<std::string> Args);
