"""Tokens of formulas in BIFF8 files, as far as checks need them: a walk by their published widths."""
import struct

# Operand bytes by the code in the reference class; operators and the like have none.
WIDTHS = {0x01: 4, 0x02: 4, 0x18: 5, 0x1C: 1, 0x1D: 1, 0x1E: 2, 0x1F: 8, 0x20: 7, 0x21: 2, 0x22: 3, 0x23: 4, 0x24: 4,
          0x25: 8, 0x26: 6, 0x27: 6, 0x28: 6, 0x29: 2, 0x2A: 4, 0x2B: 8, 0x2C: 4, 0x2D: 8, 0x2E: 2, 0x2F: 2, 0x39: 6,
          0x3A: 6, 0x3B: 10, 0x3C: 6, 0x3D: 10}
WIDTHS.update({code: 0 for code in range(0x03, 0x17)})
STRING, ATTRIBUTE, CHOOSE = 0x17, 0x19, 0x04
PTG_EXP, PTG_TBL, PTG_NAME = 0x01, 0x02, 0x23
# Those that begin with the index of a sheet reference.
WITH_XTI = {0x39, 0x3A, 0x3B, 0x3C, 0x3D}


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
