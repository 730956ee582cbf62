#!/usr/bin/env python3
"""Writes easter.golden: "year month day" of Easter Sunday for the years 326 to 4099, by python3-dateutil.

Up to 1582 it is the date in the Julian calendar, from 1583 on the date in the Gregorian calendar.
Usage: easter_model.py > easter.golden
"""
from dateutil.easter import EASTER_JULIAN, EASTER_WESTERN, easter

for year in range(326, 4100):
    day = easter(year, EASTER_JULIAN if year <= 1582 else EASTER_WESTERN)
    print(year, day.month, day.day)
