#ifndef MORTISE_BENCH_RMI_QTPEER_H
#define MORTISE_BENCH_RMI_QTPEER_H

#include <QtCore/QObject>

#include <benchmark/benchmark.h>

class cQtSender : public QObject
{
  Q_OBJECT

Q_SIGNALS:
  void count();
  void add(int iValue);
};

class cQtReceiver : public QObject
{
  Q_OBJECT

public Q_SLOTS:
  void onCount() { benchmark::DoNotOptimize(++miCount); }
  void onAdd(int iValue) { benchmark::DoNotOptimize(miCount += iValue); }
  void onScale(int iValue, int iFactor) { benchmark::DoNotOptimize(miCount += iValue * iFactor); }

private:
  int miCount = 0;
};

#endif
