// The texts of failures of formulas.
#pragma once
#include "biff/container/messages.h"

namespace vellum::formula::msg {

// Tokens to text.
inline constexpr const char* popInt16 = "ByteStream::popInt16() error";
inline constexpr const char* popInt32 = "ByteStream::popInt32() error";
inline constexpr const char* popDouble = "ByteStream::popDouble() error";
inline constexpr const char* unknownToken = "can't recognize formula block: unknown ptg";
inline constexpr const char* unknownExtended = "unknown Ptg 0x18";
inline constexpr const char* unknownAttribute = "unknown Ptg 0x19";
inline constexpr const char* unaryMinus = "toInfix error: incorrect unary minus expression";
inline constexpr const char* unaryPlus = "toInfix error: incorrect unary plus expression";
inline constexpr const char* percent = "toInfix error: incorrect percent expression";
inline constexpr const char* range = "toInfix error: incorrect ptgRange expression";
inline constexpr const char* twoOperands = "toInfix error: expected two operands for binary operator";
inline constexpr const char* brackets = "toInfix error: incorrect brackets";
inline constexpr const char* functionExpression = "toInfix error: incorrect function expression";
inline constexpr const char* noInfix = "can't build infix formula string";

// Text to tokens.
inline constexpr const char* noParenthesis = "error: function parentheses not found";
inline constexpr const char* noOpenParenthesis = "error: function name without open parenthesis";
inline constexpr const char* formulaError = "error in formula";
inline constexpr const char* incorrectToken = "incorrect token in formula";
inline constexpr const char* columnOutOfRange = "Column is out of range";
inline constexpr const char* rowOutOfRange = "Row is out of range";
inline constexpr const char* locationColumn = "RgceLoc: col must be less than 256";
inline constexpr const char* sheetNotFound = "sheet is not found";
using vellum::biff::msg::shortStringTooLong;
using vellum::msg::stringTooLong;

}  // namespace vellum::formula::msg
