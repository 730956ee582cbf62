#ifndef MORTISE_BENCH_SUPPORT_BENCH_H
#define MORTISE_BENCH_SUPPORT_BENCH_H

#include <benchmark/benchmark.h>

#define MORTISE_BENCH_JOIN2(a, b) a##b
#define MORTISE_BENCH_JOIN(a, b) MORTISE_BENCH_JOIN2(a, b)

/// Registers one contender of one case: `BENCH("signals", "emit, 1 slot", "mortise") { for (auto _ : state) ... }`.
///
/// The contender is "mortise", the name of a peer, or "limit: " and what bare thing it is. All contenders of a
/// case do the same work. A case measured in items or bytes sets state.SetItemsProcessed() or SetBytesProcessed() in
/// every contender; otherwise the time of one iteration counts.
#define BENCH(area, name, contender)                                                                                   \
  static void MORTISE_BENCH_JOIN(bench, __LINE__)(benchmark::State & state);                                           \
  [[maybe_unused]] static benchmark::internal::Benchmark* const MORTISE_BENCH_JOIN(registered, __LINE__) =             \
      benchmark::RegisterBenchmark(area "|" name "|" contender, MORTISE_BENCH_JOIN(bench, __LINE__));                  \
  static void MORTISE_BENCH_JOIN(bench, __LINE__)(benchmark::State & state)

#endif
