#pragma once

#include <cstddef>

namespace qvx {

/// How a number is printed: conversion letter 'f', 'e' or 'g' and precision, with the meaning of printf.
struct NumberFormat
{
    char letter = 'f';
    int precision = 3;
};

/// Room for any double in any format of up to 20 digits: "%.20f" of 1e308 has 330 characters and a sign.
inline constexpr std::size_t kLongestNumberText = 352;

/// Writes exactly the text that printf gives for "%.*f", "%.*e", "%.*g" (a tie goes to the even digit, the exact binary
/// value counts) and returns its end; no terminator. What is no number is "nan", whatever its sign.
/// The usual cases ('f', 'e', up to 6 digits, ordinary size) are done in integers of 53 bits.
/// @param place  with room for kLongestNumberText characters
char* PutNumber(char* place, double value, NumberFormat format);
/// Decimal digits of an int and their end.
char* PutInteger(char* place, int value);

}  // namespace qvx
