// Every chapter from 8 threads at once, each thread with its own state
// objects (generator states, communication arrays, matrices, handles, user
// functions with their data, a user stop, a fail handler): every result is
// bit for bit what the same work gives alone.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "zeb.h"

namespace {

// Everything one run computes, as bits.
struct Results {
  std::vector<uint64_t> bits;
  std::string messages;
  void add(double v) { bits.push_back(std::bit_cast<uint64_t>(v)); }
  void add(Integer v) { bits.push_back(uint64_t(v)); }
  template <class T>
  void add(const std::vector<T>& v) {
    for (T x : v) add(x);
  }
  bool operator==(const Results&) const = default;
};

thread_local std::string t_handled;  // what the fail handler saw on this thread
void handler(const char* message, int code, const char* routine) {
  t_handled += std::string(routine) + " " + std::to_string(code) + " " + message + "\n";
}

// A user function whose data (its frequency) lives in the comm of its call,
// and which asks to stop at its `stop`-th call when that is set.
double wave(double x, Zeb_Comm* comm) {
  Integer* calls = comm->iuser;
  if (++calls[0] == calls[1]) comm->flag = -5;
  return std::cos(comm->ruser[0] * x) - 0.25;
}

Results run(int seed) {
  Results r;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  fail.handler = handler;
  t_handled.clear();
  // Special functions.
  for (int k = 1; k <= 20; ++k) {
    r.add(s14aac(&fail, 0.37 * k + seed));
    r.add(s14abc(&fail, 1.7 * k + seed));
  }
  s14aac(&fail, -double(seed));  // a failure, through the handler
  // Random numbers: three generators, draws, normals, skip and leap-frog.
  for (Zeb_BaseRNG g : {Zeb_Basic, Zeb_MersenneTwister, Zeb_MRG32k3a}) {
    Integer s[6] = {seed + 1, 2, 3, 4, 5, 6}, lstate = 700;
    std::vector<Integer> state(700);
    g05kfc(g, 0, s, 6, state.data(), &lstate, &fail);
    std::vector<double> u(500);
    g05sac(500, state.data(), u.data(), &fail);
    r.add(u);
    g05kjc(12345, state.data(), &fail);
    g05skc(500, 1.0, 2.0, state.data(), u.data(), &fail);
    r.add(u);
    g05khc(4, 1 + seed % 4, state.data(), &fail);
    g05sac(100, state.data(), u.data(), &fail);
    r.add(std::vector<double>(u.begin(), u.begin() + 100));
    // distributions whose samplers build tables on first use, and one
    // with a reference vector
    g05sjc(100, 0.5 + seed, 1.0, state.data(), u.data(), &fail);
    r.add(std::vector<double>(u.begin(), u.begin() + 100));
    std::vector<double> ref(4096);
    std::vector<Integer> k(100);
    Integer lr = 4096;
    g05tjc(Zeb_InitializeAndGenerate, 100, 2e6 + seed, ref.data(), &lr, state.data(), k.data(), &fail);
    g05tec(Zeb_InitializeAndGenerate, 100, 50, 60, 200, ref.data(), &lr, state.data(), k.data(), &fail);
    for (Integer v : k) r.add(v);
  }
  // Quadrature with the thread's own user data, and a user stop.
  for (Integer stop : {Integer(0), Integer(30 + seed)}) {
    Integer calls[2] = {0, stop};
    double freq = 1.0 + 0.5 * seed, result = 0, abserr = 0;
    Zeb_Comm comm{};
    comm.iuser = calls;
    comm.ruser = &freq;
    d01sjc(wave, 0.0, 10.0, 0.0, 1e-10, 200, &result, &abserr, nullptr, &comm, &fail);
    r.add(result);
    r.add(abserr);
    r.add(calls[0]);
    r.add(Integer(fail.code));
  }
  // Zero finding: the direct form and reverse communication.
  {
    Integer calls[2] = {0, 0};
    double freq = 1.0 + 0.1 * seed, x = 0;
    Zeb_Comm comm{};
    comm.iuser = calls;
    comm.ruser = &freq;
    c05ayc(0.0, 1.3, 1e-13, 0.0, wave, &x, &comm, &fail);
    r.add(x);
    double y = 2.0 + seed, fx = 0, c[17];
    x = 0.1;
    Integer ind = 1;
    do {
      c05azc(&x, &y, fx, 1e-12, Zeb_Mixed, c, &ind, &fail);
      fx = x * x * x - 2.0 - seed;
    } while (ind != 0);
    r.add(x);
  }
  // Linear algebra on the thread's own matrices.
  {
    const Integer n = 60;
    std::vector<double> a(n * n), q(n * n), tau(n);
    std::vector<Integer> ipiv(n);
    for (Integer i = 0; i < n * n; ++i) a[size_t(i)] = std::sin(double(i * (seed + 3)));
    q = a;
    f07adc(Zeb_ColMajor, n, n, a.data(), n, ipiv.data(), &fail);
    r.add(a);
    r.add(ipiv);
    f08aec(Zeb_RowMajor, n, n, q.data(), n, tau.data(), &fail);
    r.add(q);
    r.add(tau);
  }
  // Sorting and ranking.
  {
    std::vector<double> v(3000);
    for (size_t i = 0; i < v.size(); ++i) v[i] = std::sin(double(i) * (seed + 1.5));
    std::vector<Integer> rank(v.size());
    m01dac(v.data(), 1, Integer(v.size()), Zeb_Descending, rank.data(), &fail);
    r.add(rank);
    m01cac(v.data(), 1, Integer(v.size()), Zeb_Ascending, &fail);
    r.add(v);
  }
  // An optimisation handle of the thread's own.
  {
    void* h = nullptr;
    e04rac(&h, 3, &fail);
    const double bl[] = {-1.0, 0.0, 1.0}, bu[] = {1.0, 2.0, 1.0 + seed};
    e04rhc(h, 3, bl, bu, &fail);
    e04rhc(h, 3, bl, bu, &fail);  // defined already: through the handler
    double potato = -1;
    e04rxc(h, "POTATOE", 0, 1, &potato, &fail);
    r.add(potato);
    e04rzc(&h, &fail);
  }
  r.messages = t_handled;
  return r;
}

TEST(Concurrency, EveryChapterFromEightThreadsAsAlone) {
  constexpr int kThreads = 8;
  std::vector<Results> alone(kThreads), together(kThreads);
  for (int t = 0; t < kThreads; ++t) alone[size_t(t)] = run(t);
  for (int round = 0; round < 2; ++round) {
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
      threads.emplace_back([&together, t] { together[size_t(t)] = run(t); });
    for (auto& th : threads) th.join();
    for (int t = 0; t < kThreads; ++t) {
      EXPECT_EQ(together[size_t(t)].bits, alone[size_t(t)].bits) << "thread " << t;
      EXPECT_EQ(together[size_t(t)].messages, alone[size_t(t)].messages) << "thread " << t;
    }
  }
  EXPECT_NE(alone[0].messages.find("e04rhc"), std::string::npos);
  EXPECT_NE(alone[0].bits, alone[1].bits);
}

}  // namespace
