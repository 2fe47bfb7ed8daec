"""Tokens of formulas in BIFF8 files, as far as checks need them: a walk by their published widths."""
import struct

# Operand bytes by the code in the reference class; operators and the like have none.
WIDTHS = {0x01: 4, 0x02: 4, 0x18: 5, 0x1C: 1, 0x1D: 1, 0x1E: 2, 0x1F: 8, 0x20: 7, 0x21: 2, 0x22: 3, 0x23: 4, 0x24: 4,
          0x25: 8, 0x26: 6, 0x27: 6, 0x28: 6, 0x29: 2, 0x2A: 4, 0x2B: 8, 0x2C: 4, 0x2D: 8, 0x2E: 2, 0x2F: 2, 0x39: 6,
          0x3A: 6, 0x3B: 10, 0x3C: 6, 0x3D: 10}
WIDTHS.update({code: 0 for code in range(0x03, 0x17)})
STRING, ATTRIBUTE, CHOOSE = 0x17, 0x19, 0x04
PTG_EXP, PTG_TBL, PTG_NAME = 0x01, 0x02, 0x23
PTG_FUNC, PTG_FUNC_VAR = 0x21, 0x22
ATTRIBUTE_SUM = 0x10
# Say how a reference is kept that the tokens behind them make.
MEMORY = {0x26, 0x27, 0x28, 0x29, 0x2E, 0x2F}
# Those that begin with the index of a sheet reference.
WITH_XTI = {0x39, 0x3A, 0x3B, 0x3C, 0x3D}

# Arguments of the functions that PtgFunc calls, by their number in the published table.
ARGUMENTS = {}
for _count, _functions in (
        (0, (10, 19, 34, 35, 63, 74, 221,)),
        (1, (2, 3, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 26, 32, 33, 38, 53, 67, 68, 69, 71, 72, 73, 75, 76, 77,
             83, 86, 90, 98, 99, 105, 106, 111, 112, 113, 114, 118, 121, 126, 127, 128, 129, 130, 131, 133, 134,
             135, 140, 141, 161, 162, 163, 164, 172, 179, 184, 186, 190, 198, 200, 201, 211, 214, 215, 224,
             229, 230, 231, 232, 233, 234, 244, 254, 256, 257, 261, 271, 279, 283, 284, 294, 296, 298, 342, 343,
             347, 349, 352, 360, 368, 369, 370, 371, 372, 373, 374, 375, 376, 377, 378,)),
        (2, (27, 30, 39, 48, 79, 80, 97, 108, 117, 136, 137, 138, 165, 175, 176, 178, 212, 213, 252, 274, 275, 276,
             285, 288, 299, 303, 304, 305, 306, 307, 308, 310, 311, 312, 313, 314, 315, 325, 326, 327, 328, 331, 332,
             337, 346, 353,)),
        (3, (31, 40, 41, 42, 43, 44, 45, 47, 61, 65, 66, 142, 177, 189, 195, 196, 199, 210, 235, 265, 266, 277, 278,
             280, 281, 282, 287, 290, 291, 292, 295, 297, 300, 301, 309, 351,)),
        (4, (119, 143, 207, 273, 286, 289, 293, 302, 316, 350,)),
):
    ARGUMENTS.update(dict.fromkeys(_functions, _count))


def base_of(code):
    return code if code < 0x20 else (code & 0x1F) | 0x20


def tokens(rgce):
    """(code in the reference class, operand bytes) of each token; ValueError where the bytes are none."""
    at = 0
    while at < len(rgce):
        base = base_of(rgce[at])
        if base == STRING:
            width = 2 + rgce[at + 1] * (2 if rgce[at + 2] & 1 else 1) if at + 2 < len(rgce) else 2
        elif base == ATTRIBUTE:
            width = 3
            if at + 3 < len(rgce) and rgce[at + 1] == CHOOSE:
                width += 2 * (struct.unpack_from("<H", rgce, at + 2)[0] + 1)
        elif base in WIDTHS:
            width = WIDTHS[base]
        else:
            raise ValueError("code %02X at %d" % (rgce[at], at))
        if at + 1 + width > len(rgce):
            raise ValueError("token %02X at %d is cut" % (rgce[at], at))
        yield base, rgce[at + 1:at + 1 + width]
        at += 1 + width


def counted(body, at):
    """The tokens behind a 16-bit size."""
    size = struct.unpack_from("<H", body, at)[0] if at + 2 <= len(body) else 0
    return body[at + 2:at + 2 + size]


def stack_fault(found):
    """What is wrong with the tokens as an expression, which leaves one value; None when nothing is, or when a token's
    operands are not known here."""
    depth = 0
    for base, operands in found:
        if base in MEMORY or base == ATTRIBUTE and operands[0] & ATTRIBUTE_SUM == 0:
            continue
        takes = 0
        if 0x03 <= base <= 0x11:
            takes = 2
        elif 0x12 <= base <= 0x15 or base == ATTRIBUTE:
            takes = 1
        elif base == PTG_FUNC_VAR:
            takes = operands[0] & 0x7F
        elif base == PTG_FUNC:
            takes = ARGUMENTS.get(struct.unpack("<H", operands)[0])
        elif base == 0x18:
            takes = None
        if takes is None:
            return None
        if depth < takes:
            return "token %02X needs %d operands and has %d" % (base, takes, depth)
        depth += 1 - takes
    return None if depth == 1 else "tokens leave %d values" % depth
