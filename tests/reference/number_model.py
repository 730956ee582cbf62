#!/usr/bin/env python3
"""Writes numbers.golden: numbers, formats and texts with the results that every processor must give.

The model works digit by digit with Python's own integers and doubles and shares nothing with the library.
Usage: number_model.py > numbers.golden
"""
import math
import random
import struct
import sys

# Some texts hold bytes above 127, one for each character, whatever the locale is.
sys.stdout.reconfigure(encoding="latin-1")

SYMBOLS = {"lower": "0123456789abcdefghijklmnopqrstuvwxyz", "upper": "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"}


class Invalid(Exception):
    def __init__(self, index):
        self.index = index


def whole_to_text(value, base, width, padding, case):
    digits = []
    rest = abs(value)
    while True:
        digits.append(SYMBOLS[case][rest % base])
        rest //= base
        if rest == 0:
            break
    text = "".join(reversed(digits))
    if value < 0:
        text = "-" + text
    if len(text) < width:
        sign_at = width - len(text)
        text = padding * (width - len(text)) + text
        if value < 0:
            characters = list(text)
            characters[sign_at] = padding
            characters[0] = "-"
            text = "".join(characters)
    return text


def fraction_to_text(value, precision, remove_zeros, add_whole, add_fraction):
    if math.isnan(value):
        return "nan"
    if math.isinf(value):
        return "+inf" if value > 0 else "-inf"
    text = ""
    if value < 0:
        if add_whole:
            text += "-"
        value = -value
    rounding = 0.5
    for _ in range(precision):
        rounding /= 10
    value += rounding
    if add_whole:
        digits = ""
        whole = value
        while whole >= 1:
            digits += SYMBOLS["lower"][int(math.fmod(whole, 10))]
            whole /= 10
        text += digits[::-1] if digits else "0"
    if add_fraction:
        fraction = "."
        rest = math.fmod(value, 1)
        for _ in range(precision):
            rest *= 10
            fraction += SYMBOLS["lower"][int(rest)]
            rest = math.fmod(rest, 1)
        if remove_zeros:
            fraction = fraction.rstrip("0")
            if fraction == ".":
                fraction = ""
        text += fraction
    return text


def text_to_whole(text, base, detect):
    if text == "":
        return 0
    sign = 1
    index = 0
    while index < len(text) and text[index] == " ":
        index += 1
    if index < len(text) and text[index] == "-":
        sign = -sign
        index += 1
    rest = text[index:]
    if detect and len(rest) > 2:
        named = {"0x": 16, "0h": 16, "0d": 10, "0b": 2}
        if rest[:2] in named:
            base = named[rest[:2]]
            index += 2
        else:
            for length in (1, 2):
                number = rest[1 : 1 + length]
                if (
                    rest[0] == "<"
                    and len(number) == length
                    and all(c in "0123456789" for c in number)
                    and rest[1 + length : 2 + length] == ">"
                    and 1 <= int(number) <= 36
                ):
                    base = int(number)
                    index += 2 + length
                    break
    result = 0
    any_digit = False
    for at in range(index, len(text)):
        character = text[at]
        result *= base
        if character == "-" and not any_digit:
            sign = -sign
            continue
        upper = character.upper() if character.isascii() else character
        alphabet = SYMBOLS["upper"][:base]
        if upper not in alphabet:
            raise Invalid(at)
        result += alphabet.index(upper)
        any_digit = True
    result = (result * sign) & 0xFFFFFFFFFFFFFFFF
    return result - (1 << 64) if result >> 63 else result


def power_of_ten(exponent):
    result = 1.0
    square = 10.0
    while exponent:
        if exponent & 1:
            result *= square
        exponent >>= 1
        if exponent:
            square *= square
    return result


def text_to_fraction(text):
    index = 0
    while index < len(text) and text[index] == " ":
        index += 1
    value = 0.0
    sign = 1.0
    factor = 1.0
    exponent = 0
    exponent_sign = 1
    state = "whole"
    for at in range(index, len(text)):
        character = text[at]
        if character in "0123456789":
            digit = ord(character) - ord("0")
            if state == "whole":
                value = value * 10 + digit
            elif state == "fraction":
                factor /= 10
                value = value + digit * factor
            else:
                exponent = exponent * 10 + digit
        elif character == "-":
            if state == "exponent":
                exponent_sign = -exponent_sign
            else:
                sign = -sign
        elif character == "+":
            pass
        elif character == "." and state == "whole":
            state = "fraction"
        elif character in "eE" and state != "exponent":
            state = "exponent"
        else:
            raise Invalid(at)
    # 10^256 at a time: the power itself must stay finite
    exponent = min(exponent, 100000)
    while exponent and value != 0 and not math.isinf(value):
        step = min(exponent, 256)
        exponent -= step
        value = value * power_of_ten(step) if exponent_sign > 0 else value / power_of_ten(step)
    return value * sign


def bits(value):
    return "%016x" % struct.unpack("<Q", struct.pack("<d", value))[0]


def from_bits(number):
    return struct.unpack("<d", struct.pack("<Q", number))[0]


def outcome(function, *arguments):
    try:
        return function(*arguments)
    except Invalid as invalid:
        return "!%d" % invalid.index


def main():
    source = random.Random(20240229)

    wholes = [0, 1, -1, 9, 10, 11, 35, 36, 37, 99, 100, 101, 255, 256, 999, 1000, 12345, -12345, 99999999, 100000000]
    wholes += [4294967295, 4294967296, -4294967296, 999999999999999999, (1 << 63) - 1, -(1 << 63), 1 << 63, (1 << 64) - 1]
    wholes += [10**n for n in range(3, 19)] + [10**n - 1 for n in range(3, 19)]
    wholes += [source.getrandbits(source.randint(1, 63)) * source.choice((1, -1)) for _ in range(150)]
    for value in wholes:
        bases = [10] + source.sample([b for b in range(2, 37) if b != 10], 3)
        for base in bases:
            width = source.choice((0, 0, 0, 1, 5, 8, 20, 66, 80))
            padding = source.choice("00 *x")
            case = source.choice(("lower", "upper"))
            text = whole_to_text(value, base, width, padding, case)
            print("\t".join(("whole", str(value), str(base), str(width), padding, case, text)))

    fractions = [0.0, -0.0, 0.5, 1.0, 1.5, -1.5, 0.1, 0.2, 0.3, 1 / 3, 2 / 3, 1e-5, 1e-14, 4e-15, 5e-15, 6e-15, 1e-300]
    fractions += [5e-324, 2.2250738585072014e-308, 0.05, 0.005, 0.15, 0.25, 0.95, 0.995, 0.9999999999999999, 9.99, 9.5]
    fractions += [math.pi, math.e, -math.pi * 1000, 99.99999999999999, 999999.9999999999, 123456789.987654321, 1e15]
    fractions += [2.0**52, 2.0**53 - 1, 2.0**53, 2.0**53 + 2, 2.0**54 + 4, 2.0**55 - 8, 2.0**63, 2.0**64, 1e16, 1e17, 1e20]
    fractions += [1e21, 1e22, 1e23, 1e100, 1.7976931348623157e308, 4503599627370495.5, 4503599627370497.5]
    fractions += [math.inf, -math.inf, math.nan]
    fractions += [source.uniform(-10, 10) for _ in range(120)]
    fractions += [source.uniform(0, 1) for _ in range(120)]
    fractions += [source.uniform(-1, 1) * 10.0 ** source.randint(-20, 25) for _ in range(200)]
    fractions += [round(source.uniform(0, 1000), source.randint(0, 6)) for _ in range(120)]
    fractions += [from_bits(source.getrandbits(64)) for _ in range(60)]
    for value in fractions:
        formats = [(14, True, True, True)]
        formats.append((source.choice((0, 1, 2, 3, 5, 8, 14, 16, 17, 20, 40)), source.random() < 0.5, True, True))
        formats.append((source.choice((0, 2, 14, 30)), source.random() < 0.5, source.random() < 0.5, source.random() < 0.5))
        for precision, remove_zeros, add_whole, add_fraction in formats:
            text = fraction_to_text(value, precision, remove_zeros, add_whole, add_fraction)
            flags = "".join("01"[flag] for flag in (remove_zeros, add_whole, add_fraction))
            print("\t".join(("fraction", bits(value), str(precision), flags, text)))

    texts = ["", " ", "-", "--", "--5", "-0x1F", "  0x1f", "0x1F", "0x", "0h7f", "0d19", "0b101", "0b102", "0X1F", "<8>17"]
    texts += ["<36>z", "<37>1", "<1>0", "<1>000", "<1>1", "<0>1", "<08>17", "<16>ff", "<8>", "<8", "<>1", "<123>1", "< 8>1"]
    texts += ["ff", "FF", "fF", "zz", "ZZ", "+5", "5-", "5-3", "0x-5", "- 5", "5 ", "\xe9", "12\xb5", "1.5", "007", "0xg", "-<2>11"]
    texts += ["18446744073709551615", "18446744073709551616", "9223372036854775808", "-9223372036854775809", "9" * 40]
    alphabet = "0123456789abcdfghxzAFZ<>- +."
    texts += ["".join(source.choice(alphabet) for _ in range(source.randint(1, 8))) for _ in range(400)]
    for text in texts:
        for base in (10, 16, source.randint(2, 36)):
            detect = source.random() < 0.6
            result = outcome(text_to_whole, text, base, detect)
            print("\t".join(("read", str(base), "01"[detect], str(result), text)))

    texts = ["", " ", "-", "+", ".", "e", "E5", "1e3", "1.5E-1", "1.", ".5", "-.5", "  2.5", "1e", "1e-", "1e+5", "1e--5", "1-2"]
    texts += ["--3", "1.2.3", "1e2.5", "1e2e3", "1,5", "0x10", "nan", "+inf", "12 ", "0.1", "0.2", "0.3", "123456789012345678901"]
    texts += ["0e99999", "0e999999999999", "1e308", "1e309", "1e-308", "1e-323", "5e-324", "1e-400", "17976931348623157e292"]
    texts += ["0." + "0" * 320 + "1e330", "1" + "0" * 400, "1" + "0" * 400 + "e-400", "0." + "1" * 400, "3.14159265358979323846"]
    texts += ["2.2250738585072014e-308", "1.7976931348623157e308", "9007199254740993", "900719925474099.3", "1e22", "1e23", "1e255", "1e256"]
    texts += ["%.*f" % (source.randint(0, 20), source.uniform(-1000, 1000)) for _ in range(200)]
    texts += ["%.*e" % (source.randint(0, 18), source.uniform(-1, 1) * 10.0 ** source.randint(-300, 300)) for _ in range(200)]
    alphabet = "00123456789999.-+eE"
    texts += ["".join(source.choice(alphabet) for _ in range(source.randint(1, 10))) for _ in range(300)]
    for text in texts:
        result = outcome(text_to_fraction, text)
        print("\t".join(("readfraction", result if isinstance(result, str) else bits(result), text)))


if __name__ == "__main__":
    main()
