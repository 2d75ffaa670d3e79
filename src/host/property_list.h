#pragma once

// What the module tells the host about itself, in one table. The resource compiler reads it to
// write the module's property list, and global set-up answers with the same numbers: the host
// compares them. So the first part of this file is for the preprocessor alone.

// Version 1.0.0, stage develop, build 1.
#define VELLUMTIDE_PROPERTY_VERSION 0x00080001L
// Keep resource open, sequence data needs flattening, own options dialog, 16-bit colour, parameter
// panel updates.
#define VELLUMTIDE_OUT_FLAGS 0x06000031L
// Smart render, float colour.
#define VELLUMTIDE_OUT_FLAGS_2 0x00001400L

// Keys and four-character values are numbers whose bytes, the highest first, spell the comment.
// NUMBER(key, value), PAIR(key, major, minor) and TEXT(key, bytes, text): a text is a length byte
// and the characters, or characters and a zero, filled up with zeros to a multiple of four.
#define VELLUMTIDE_PROPERTY_VENDOR 0x3842494DL /* 8BIM */
#define VELLUMTIDE_PROPERTY_COUNT 12L
#define VELLUMTIDE_PROPERTIES(NUMBER, PAIR, TEXT)                     \
  NUMBER(0x6B696E64L /* kind */, 0x65464B54L /* eFKT */)              \
  TEXT(0x6E616D65L /* name */, 12L, "\012Vellumtide\0")               \
  TEXT(0x63617467L /* catg */, 12L, "\011Orrinwald\0\0")              \
  TEXT(0x38363634L /* 8664 */, 16L, "EntryPointFunc\0\0")             \
  PAIR(0x65505652L /* ePVR */, 2, 0)                                  \
  PAIR(0x65535652L /* eSVR */, 13, 0)                                 \
  NUMBER(0x65564552L /* eVER */, VELLUMTIDE_PROPERTY_VERSION)         \
  NUMBER(0x65494E46L /* eINF */, 0L)                                  \
  NUMBER(0x65474C4FL /* eGLO */, VELLUMTIDE_OUT_FLAGS)                \
  NUMBER(0x65474C32L /* eGL2 */, VELLUMTIDE_OUT_FLAGS_2)              \
  TEXT(0x654D4E41L /* eMNA */, 24L, "\024Orrinwald_Vellumtide\0\0\0") \
  NUMBER(0x6165464CL /* aeFL */, 0L)

#ifndef RC_INVOKED

#include "aeapi/scalars.h"

namespace vellumtide {

inline constexpr A_u_long pluginVersion = VELLUMTIDE_PROPERTY_VERSION;
inline constexpr PF_OutFlags pluginOutFlags = VELLUMTIDE_OUT_FLAGS;
inline constexpr PF_OutFlags2 pluginOutFlags2 = VELLUMTIDE_OUT_FLAGS_2;

}  // namespace vellumtide

#endif
