// e04ra: a new handle; e04rz: its end; the validation every routine of the
// suite makes first.
#include <cstring>
#include <new>

#include "frame/layers.hpp"
#include "optim/checks.hpp"
#include "optim/optim.def"
#include "optim/problem.hpp"
#include "zeb/optim.h"

namespace zeb::opt {

Problem* record(const void* handle, int64_t* reason) {
  if (!handle) {
    *reason = 100;
    return nullptr;
  }
  const Header* h = static_cast<const Header*>(handle);
  if (h->w[0] != kTag || std::memcmp(h->w + 1, kLetters, sizeof kLetters) != 0) {
    *reason = 101;
    return nullptr;
  }
  if (!h->record) *reason = 102;
  return h->record;
}

Problem* open(const void* handle, char* errbuf, int64_t len, int64_t* ifail) {
  int64_t reason = 0;
  Problem* p = record(handle, &reason);
  if (!p) {
    static constexpr const Msg<0>* kRows[3] = {&kNullHandle, &kForeignHandle, &kNoRecord};
    fail(errbuf, len, ifail, *kRows[reason - 100]);
  }
  return p;
}

double bigbnd(const Problem& p) { return p.options.real("INFINITE BOUND SIZE"); }

Problem* open_editable(const void* handle, char* errbuf, int64_t len, int64_t* ifail) {
  Problem* p = open(handle, errbuf, len, ifail);
  if (p && p->phase != kEditable) {
    fail(errbuf, len, ifail, kNotEditable);
    return nullptr;
  }
  return p;
}

}  // namespace zeb::opt

namespace {

using namespace zeb::opt;

constexpr zeb::Msg<1> kBadNvar{6, 6, NE_INT, "On entry, nvar = %s.\nConstraint: nvar > 0."};
constexpr const zeb::MsgRow* kInitMessages[] = {&kBadNvar};
constexpr const zeb::MsgRow* kFreeMessages[] = {ZEB_OPT_HANDLE_ROWS};

}  // namespace

ZEB_LAYERS(e04raf, E04RAF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04raf, E04RAF_ARGS, kInitMessages)

extern "C" void e04rafn_(void** handle, const int64_t* nvar, char* errbuf, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (*nvar < 1) return zeb::fail(errbuf, len, ifail, kBadNvar, *nvar);
  auto p = std::make_unique<Problem>(*nvar);
  Header* h = new Header{{kTag, kLetters[0], kLetters[1], kLetters[2], kLetters[3], 0, 0, 0},
                         p.release()};
  *handle = h;
}

ZEB_API void e04rac(void** handle, Integer nvar, ZebError* fail) {
  c_call(fail, "e04rac", kInitMessages, {{"handle", handle, 1}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04raft_(en, handle, &nvar, eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rzf, E04RZF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rzf, E04RZF_ARGS, kFreeMessages)

extern "C" void e04rzfn_(void** handle, char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (!*handle) return;  // nothing to free
  Problem* p = zeb::opt::open(*handle, errbuf, len, ifail);
  if (!p) return;
  Header* h = static_cast<Header*>(*handle);
  delete p;
  std::memset(h, 0, sizeof *h);  // a copy of the handle kept by the caller is refused
  delete h;
  *handle = nullptr;
}

ZEB_API void e04rzc(void** handle, ZebError* fail) {
  c_call(
      fail, "e04rzc", kFreeMessages, {{"handle", handle, 1}},
      [&](ZebEnData* en, char* eb, int64_t* ie) { e04rzft_(en, handle, eb, ie, zeb::kErrbufLen); });
}
