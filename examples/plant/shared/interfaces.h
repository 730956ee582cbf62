/// \file
/// The interfaces by which the modules and the program know each other. Nothing else of a module is known outside of
/// it.
///
/// All signals are without arguments: who hears one asks for the rest by slots.
///
/// "plant.meter": measures figures of this machine.
///   figures() -> piUInt32                                    how many there are
///   figure(index, name&, unit&) -> piBool                    describes one; false for an index that is none
///   value(name) -> piDouble                                  the last value; fails with the reason if there is none
///   setInterval(milliseconds)                                between two measurements
///   signal measured                                          there are new values
///
/// "plant.history": keeps the values of the meter.
///   take()                                                   adds the meter's values
///   samples(name) -> piUInt32                                how many are kept
///   mean(name, count, mean&) -> piBool                       of the last `count`; false if there are none
///   range(name, lowest&, highest&) -> piBool                 of all that are kept; false if there are none
///   signal taken                                             there are new values
///
/// "plant.alarm": compares the mean of the last values with limits.
///   setLimit(name, limit)                                    sets the limit of a figure
///   removeLimit(name) -> piBool                              false if it had none
///   limit(name, limit&) -> piBool                            false if it has none
///   check()                                                  compares
///   raised() -> piUInt32                                     how many figures are above their limits
///   events() -> piUInt32                                     how many things have happened so far
///   event(number, name&, value&) -> piUInt32                 one of them, counted from 0: an AlarmEvent
///   signal changed                                           something has happened
///
/// "plant.printer": prints all of that.
///   print()                                                  prints the values, and the failures behind those that
///   lack tellAlarms()                                             prints what has happened lines() -> piUInt32 how
///   many lines it has printed
#ifndef MORTISE_EXAMPLES_PLANT_SHARED_INTERFACES_H
#define MORTISE_EXAMPLES_PLANT_SHARED_INTERFACES_H

/// What event() of an alarm tells.
enum AlarmEvent : unsigned int
{
  NoEvent = 0, ///< there is no event of this number
  Raised = 1,  ///< a figure rose above its limit
  Cleared = 2, ///< it fell to its limit, or below
  Unknown = 3  ///< there is a limit of a figure that nobody measures
};

#endif
