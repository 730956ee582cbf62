#ifndef MORTISE_TOOLS_CABSTRACTCOMMAND_H
#define MORTISE_TOOLS_CABSTRACTCOMMAND_H

/// One sub-command of the tool. Its constructor tells the parser of it and of its arguments.
class cAbstractCommand
{
public:
  /// What the program ends with.
  enum ExitCode
  {
    Fine = 0,
    Damaged = 1, ///< what was looked at is not whole
    Unusable = 2 ///< wrong arguments, or a file that can't be read or written
  };

  cAbstractCommand() = default;
  cAbstractCommand(cAbstractCommand const&) = delete; // the parser refers to the members
  cAbstractCommand& operator=(cAbstractCommand const&) = delete;
  virtual ~cAbstractCommand() = default;

  /// Whether the command line asks for it.
  virtual bool isChosen() const = 0;
  virtual ExitCode run() = 0;
};

#endif
