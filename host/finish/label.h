/// @file
/// Labels: texts with fields for the measured number.
///
///     {}       the value text as the call wrote it, signs included
///     {.3}     the number alone, with 0 to 9 decimals; angles in degrees
///     {.2in}   the same in inches; of lengths only, as the three below
///     {/16in}  in inches and sixteenths, or any other fraction up to thousandths
///     {ft}     in feet and inches, with at most two decimals
///     {/16ft}  in feet, inches and sixteenths of one, or any other fraction
///     {//16in} {//16ft}  the same with the fraction in its lowest terms
///     {.2rad}  an angle in radians, with 0 to 9 decimals
///     {dms}    an angle in degrees, minutes and seconds
///     {{ }}    braces
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/calls/calls.h"

namespace host {

/// What is wrong with a line of a label, whatever was measured; nothing where it is right.
std::optional<std::string_view> mistakeInLabel(std::wstring_view line);

/// What keeps a line of a label without a mistake from showing this quantity; nothing where it can.
std::optional<std::string_view> misfitOfLabel(std::wstring_view line, Quantity quantity);

/// A line with its fields filled in. Lengths are millimetres.
/// @param written the value text as the call wrote it
std::wstring filledLabel(std::wstring_view line, const Measured& measured,
                         const std::wstring& written);

} // namespace host
