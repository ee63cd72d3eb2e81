// The entry layers of a routine, generated from one description of its
// argument list.
//
// A routine is described once as a list of rows A(kind, type, name[, fortran])
// in the order of the arguments of its Fortran entry.  The rows of a
// chapter's public routines live in the chapter's .def file (special/
// special.def ...), which its sources include and from which
// scripts/gen_fortran.py writes the Fortran interface module:
//
//   #define S14AAF_ARGS(A) A(in, double, x) A(res, double, gx) A(ifail, int64_t, ifail)
//
// kinds:  in     scalar input                 (const T*)
//         out    scalar output                (T*)
//         inout  scalar input and output      (T*)
//         res    the function result: returned by the Fortran entry, passed
//                by the lower layers through a pointer after the inputs
//         arr    array, read and written      (T*)
//         carr   array, only read             (const T*)
//         oarr   array, only written          (T*)
//         chr    one-character option; the Fortran entry takes a hidden
//                length, the engine only the character
//         fun    user-supplied function       (T, a function pointer type)
//         val    scalar passed by value       (T)
//         str    character string; the lower layers take its length as
//                an explicit argument right after it
//         ostr   the same for a string the routine writes
//         ifail  the failure indicator (last): taken by the Fortran entry;
//                the lower layers take it after errbuf
//         shim   function argument of the lower layers that the Fortran
//                entry does not take: it passes the library's own function
//                named in the fourth field (the internal callback shim, or
//                the library's own record writer)  (T)
//         handle an optimisation-suite handle: void** (Fortran type(c_ptr))
//                at the Fortran entry, which passes the pointer by value
//                (void*) to the lower layers; T is void*.  A routine that
//                creates or clears the handle writes it: A(inout, void*, h)
//         incopy scalar input of the Fortran entry, which passes a copy: the
//                lower layers may write it (for the C entry)  (T*)
// The optional fourth field is for the Fortran interface alone, except for
// shim rows: the dimensions of an array ("lda, *"; "*" when absent), the
// abstract interface of a user function (fun), the function a shim row
// passes.
//
// From the list:
//   ZEB_LAYERS(stem, ARGS)     the thin entry stem##t_ (errbuf length fixed
//                              at 200) and the traced entry stem##v_, over
//                              the engine stem##n_ written by hand;
//   ZEB_LAYERS_EN(stem, ARGS)  the same for an engine that also takes the
//                              en_data record first (routines that call
//                              back into user code);
//   ZEB_FORTRAN_FUNCTION(stem, T, ARGS, msgs) / ZEB_FORTRAN_SUBROUTINE(stem,
//                              ARGS, msgs)  the Fortran entry stem##_ with
//                              the ifail protocol and the routine's messages;
//   ZEB_FORTRAN_QUICK_FUNCTION(stem, ARGS, msgs, value)  the same for a
//                              real function of one real argument with a
//                              quick return (zeb::quick);
//   ZEB_LAYERS_NOFAIL, ZEB_LAYERS_NOFAIL_EN, ZEB_FORTRAN_FUNCTION_NOFAIL,
//   ZEB_FORTRAN_SUBROUTINE_NOFAIL
//                              the same for routines without failure exits
//                              (no errbuf, no ifail);
//   ZEB_FORTRAN_DECL(stem, ARGS)  the declaration of a Fortran entry written
//                              by hand (no layers), so that the compiler
//                              holds its definition to the rows.
// The C entry, which differs most between routines, is written by hand
// with zeb::c_entry.
#pragma once

#include "frame.hpp"
#include "trace.hpp"

// The expansions below all begin with a comma; ZEB_TAIL drops the empty
// field in front of the first one.
#define ZEB_TAIL(...) ZEB_TAIL_I(__VA_ARGS__)
#define ZEB_TAIL_I(first, ...) __VA_ARGS__

// Engine, thin and traced parameters.
#define ZEB_P_in(T, n) , const T* n
#define ZEB_P_out(T, n) , T* n
#define ZEB_P_inout(T, n) , T* n
#define ZEB_P_res(T, n) , T* n
#define ZEB_P_arr(T, n) , T* n
#define ZEB_P_carr(T, n) , const T* n
#define ZEB_P_chr(T, n) , const char* n
#define ZEB_P_fun(T, n) , T n
#define ZEB_P_val(T, n) , T n
#define ZEB_P_str(T, n) , const char* n, int64_t n##_len
#define ZEB_P_ostr(T, n) , char* n, int64_t n##_len
#define ZEB_P_oarr(T, n) , T* n
#define ZEB_P_ifail(T, n)
#define ZEB_P_shim(T, n) , T n
#define ZEB_P_handle(T, n) , T n
#define ZEB_P_incopy(T, n) , T* n
#define ZEB_P(kind, T, n, ...) ZEB_P_##kind(T, n)

// Fortran entry parameters: the result is returned, not passed.
#define ZEB_FP_res(T, n)
#define ZEB_FP_in(T, n) ZEB_P_in(T, n)
#define ZEB_FP_out(T, n) ZEB_P_out(T, n)
#define ZEB_FP_inout(T, n) ZEB_P_inout(T, n)
#define ZEB_FP_arr(T, n) ZEB_P_arr(T, n)
#define ZEB_FP_carr(T, n) ZEB_P_carr(T, n)
#define ZEB_FP_chr(T, n) ZEB_P_chr(T, n)
#define ZEB_FP_fun(T, n) ZEB_P_fun(T, n)
#define ZEB_FP_val(T, n) ZEB_P_val(T, n)
#define ZEB_FP_str(T, n) , const char* n
#define ZEB_FP_ostr(T, n) , char* n
#define ZEB_FP_oarr(T, n) ZEB_P_oarr(T, n)
#define ZEB_FP_ifail(T, n) , T* n
#define ZEB_FP_shim(T, n)
#define ZEB_FP_handle(T, n) , T* n
#define ZEB_FP_incopy(T, n) , const T* n
#define ZEB_FP(kind, T, n, ...) ZEB_FP_##kind(T, n)

// Hidden lengths of character arguments, appended after all others.
#define ZEB_HID_chr(T, n) , [[maybe_unused]] size_t n##_len
#define ZEB_HID_in(T, n)
#define ZEB_HID_out(T, n)
#define ZEB_HID_inout(T, n)
#define ZEB_HID_res(T, n)
#define ZEB_HID_arr(T, n)
#define ZEB_HID_carr(T, n)
#define ZEB_HID_fun(T, n)
#define ZEB_HID_val(T, n)
#define ZEB_HID_str(T, n) , size_t n##_len
#define ZEB_HID_ostr(T, n) , size_t n##_len
#define ZEB_HID_oarr(T, n)
#define ZEB_HID_ifail(T, n)
#define ZEB_HID_shim(T, n)
#define ZEB_HID_handle(T, n)
#define ZEB_HID_incopy(T, n)
#define ZEB_HID(kind, T, n, ...) ZEB_HID_##kind(T, n)

// Forwarding an argument to the next layer down; the Fortran entry passes
// the address of its result.
#define ZEB_FWD_str(n) , n, n##_len
#define ZEB_FWD_ostr(n) , n, n##_len
#define ZEB_FWD_in(n) , n
#define ZEB_FWD_out(n) , n
#define ZEB_FWD_inout(n) , n
#define ZEB_FWD_res(n) , n
#define ZEB_FWD_arr(n) , n
#define ZEB_FWD_carr(n) , n
#define ZEB_FWD_chr(n) , n
#define ZEB_FWD_fun(n) , n
#define ZEB_FWD_val(n) , n
#define ZEB_FWD_oarr(n) , n
#define ZEB_FWD_ifail(n)
#define ZEB_FWD_shim(n) , n
#define ZEB_FWD_handle(n) , n
#define ZEB_FWD_incopy(n) , n
#define ZEB_FWD(kind, T, n, ...) ZEB_FWD_##kind(n)
#define ZEB_FFWD_res(n, ...) , &zeb_result
#define ZEB_FFWD_in(n, ...) , n
#define ZEB_FFWD_out(n, ...) , n
#define ZEB_FFWD_inout(n, ...) , n
#define ZEB_FFWD_arr(n, ...) , n
#define ZEB_FFWD_carr(n, ...) , n
#define ZEB_FFWD_oarr(n, ...) , n
#define ZEB_FFWD_chr(n, ...) , n
#define ZEB_FFWD_fun(n, ...) , n
#define ZEB_FFWD_val(n, ...) , n
#define ZEB_FFWD_str(n, ...) , n, int64_t(n##_len)
#define ZEB_FFWD_ostr(n, ...) , n, int64_t(n##_len)
#define ZEB_FFWD_ifail(n, ...)
#define ZEB_FFWD_shim(n, f) , f
#define ZEB_FFWD_handle(n, ...) , *n
#define ZEB_FFWD_incopy(n, ...) , zeb::copy_of(n)
#define ZEB_FFWD(kind, T, n, ...) ZEB_FFWD_##kind(n, __VA_ARGS__)

// Trace lines of the arguments.
#define ZEB_TR_in(T, n) , zeb::trace::arg(#n, n)
#define ZEB_TR_out(T, n) , zeb::trace::arg(#n, n)
#define ZEB_TR_inout(T, n) , zeb::trace::arg(#n, n)
#define ZEB_TR_res(T, n) , zeb::trace::arg(#n, n)
#define ZEB_TR_arr(T, n) , zeb::trace::arr(#n, n)
#define ZEB_TR_carr(T, n) , zeb::trace::arr(#n, n)
#define ZEB_TR_chr(T, n) , zeb::trace::arg(#n, n)
#define ZEB_TR_fun(T, n) , zeb::trace::fun(#n, n)
#define ZEB_TR_val(T, n) , zeb::trace::arg(#n, &n)
#define ZEB_TR_str(T, n) , zeb::trace::str(#n, n, n##_len)
#define ZEB_TR_ostr(T, n) , zeb::trace::str(#n, n, n##_len)
#define ZEB_TR_oarr(T, n) , zeb::trace::arr(#n, n)
#define ZEB_TR_ifail(T, n)
#define ZEB_TR_shim(T, n) , zeb::trace::fun(#n, n)
#define ZEB_TR_handle(T, n) , zeb::trace::arg(#n, &n)
#define ZEB_TR_incopy(T, n) , zeb::trace::arg(#n, n)

// Parameter types alone, for function pointer types of callbacks.
#define ZEB_T_in(T) , const T*
#define ZEB_T_out(T) , T*
#define ZEB_T_inout(T) , T*
#define ZEB_T_res(T) , T*
#define ZEB_T_arr(T) , T*
#define ZEB_T_carr(T) , const T*
#define ZEB_T_chr(T) , const char*
#define ZEB_T_fun(T) , T
#define ZEB_T_val(T) , T
#define ZEB_T_str(T) , const char*, int64_t
#define ZEB_T_ostr(T) , char*, int64_t
#define ZEB_T_oarr(T) , T*
#define ZEB_T_ifail(T)
#define ZEB_T_shim(T) , T
#define ZEB_T_handle(T) , T
#define ZEB_T_incopy(T) , T*
#define ZEB_T(kind, T, n, ...) ZEB_T_##kind(T)
#define ZEB_TR(kind, T, n, ...) ZEB_TR_##kind(T, n)

// The traced call: with the switch off it costs one test.  The traced path
// is a function of its own, on copies of the arguments (pointers and
// values), so that the layer's own frame holds nothing for it.
#define ZEB_TRACED_CALL(name, en, ARGS, eb, ifl, CALL)                              \
  if (__builtin_expect(zeb::trace::on(), 0)) {                                      \
    [=]() __attribute__((noinline, cold)) {                                         \
      const zeb::trace::Arg zeb_targs[] = {zeb::trace::Arg{} ARGS(ZEB_TR)};         \
      const int zeb_nt = int(sizeof zeb_targs / sizeof zeb_targs[0]) - 1;           \
      zeb::trace::block(en, name, 0, zeb_targs + 1, zeb_nt, eb, ifl);               \
      CALL;                                                                         \
      zeb::trace::block(en, name, 1, zeb_targs + 1, zeb_nt, eb, ifl);               \
    }();                                                                            \
  } else {                                                                          \
    CALL;                                                                           \
  }

#define ZEB_LAYERS_IMPL(stem, ARGS, ENGINE_PARAMS, ENGINE_ARGS)                          \
  ZEB_API void stem##n_(ENGINE_PARAMS);                                               \
  ZEB_API void stem##v_(ZebEnData* en_data ARGS(ZEB_P), char* errbuf, int64_t* ifail,    \
                        int64_t errbuf_len) {                                            \
    ZEB_TRACED_CALL(#stem "v", en_data, ARGS, errbuf, ifail,                             \
                    zeb::guarded(errbuf, errbuf_len, ifail, [&] { stem##n_(ENGINE_ARGS); })) \
  }                                                                                      \
  ZEB_API void stem##t_(ZebEnData* en_data ARGS(ZEB_P), char* errbuf, int64_t* ifail,    \
                        int64_t) {                                                       \
    stem##v_(en_data ARGS(ZEB_FWD), errbuf, ifail, zeb::kErrbufLen);                     \
  }

#define ZEB_LAYERS(stem, ARGS)                                                   \
  ZEB_LAYERS_IMPL(stem, ARGS,                                                    \
                  ZEB_TAIL(ARGS(ZEB_P), char* errbuf, int64_t* ifail, int64_t errbuf_len), \
                  ZEB_TAIL(ARGS(ZEB_FWD), errbuf, ifail, errbuf_len))
#define ZEB_LAYERS_EN(stem, ARGS)                                                        \
  ZEB_LAYERS_IMPL(stem, ARGS,                                                            \
                  ZebEnData* en_data ARGS(ZEB_P) ZEB_COMMA char* errbuf ZEB_COMMA int64_t* ifail \
                      ZEB_COMMA int64_t errbuf_len,                                      \
                  en_data ARGS(ZEB_FWD) ZEB_COMMA errbuf ZEB_COMMA ifail ZEB_COMMA errbuf_len)
#define ZEB_COMMA ,

#define ZEB_FORTRAN_FUNCTION(stem, T, ARGS, msgs)           \
  ZEB_API T stem##_(ZEB_TAIL(ARGS(ZEB_FP)) ARGS(ZEB_HID)) { \
    ZEB_FORTRAN_FUNCTION_BODY(stem, T, ARGS, msgs)          \
  }
// The same for a real function of one real argument named x with a quick
// return (zeb::quick): value(x, ok) is the engine's computation.
#define ZEB_FORTRAN_QUICK_FUNCTION(stem, ARGS, msgs, value)                \
  ZEB_API double stem##_(ZEB_TAIL(ARGS(ZEB_FP)) ARGS(ZEB_HID)) {           \
    if (double zeb_quick; zeb::quick(value, *x, zeb_quick)) {              \
      *ifail = 0;                                                          \
      return zeb_quick;                                                    \
    }                                                                      \
    ZEB_FORTRAN_FUNCTION_BODY(stem, double, ARGS, msgs)                    \
  }
#define ZEB_FORTRAN_FUNCTION_BODY(stem, T, ARGS, msgs)                                 \
  T zeb_result{};                                                                      \
  zeb::fortran_entry(#stem, msgs, ifail, [&](ZebEnData* en, char* eb, int64_t* ie) {   \
    stem##t_(en ARGS(ZEB_FFWD), eb, ie, zeb::kErrbufLen);                              \
  });                                                                                  \
  return zeb_result;

#define ZEB_FORTRAN_SUBROUTINE(stem, ARGS, msgs)                                       \
  ZEB_API void stem##_(ZEB_TAIL(ARGS(ZEB_FP)) ARGS(ZEB_HID)) {                         \
    zeb::fortran_entry(#stem, msgs, ifail, [&](ZebEnData* en, char* eb, int64_t* ie) { \
      stem##t_(en ARGS(ZEB_FFWD), eb, ie, zeb::kErrbufLen);                            \
    });                                                                                \
  }

// Routines without failure exits: no errbuf, no ifail.
#define ZEB_LAYERS_NOFAIL_IMPL(stem, ARGS, ENGINE_PARAMS, ENGINE_ARGS)                  \
  ZEB_API void stem##n_(ENGINE_PARAMS);                                              \
  ZEB_API void stem##v_(ZebEnData* en_data ARGS(ZEB_P)) {                               \
    ZEB_TRACED_CALL(#stem "v", en_data, ARGS, nullptr, nullptr, stem##n_(ENGINE_ARGS))  \
  }                                                                                     \
  ZEB_API void stem##t_(ZebEnData* en_data ARGS(ZEB_P)) { stem##v_(en_data ARGS(ZEB_FWD)); }
#define ZEB_LAYERS_NOFAIL(stem, ARGS) \
  ZEB_LAYERS_NOFAIL_IMPL(stem, ARGS, ZEB_TAIL(ARGS(ZEB_P)), ZEB_TAIL(ARGS(ZEB_FWD)))
#define ZEB_LAYERS_NOFAIL_EN(stem, ARGS) \
  ZEB_LAYERS_NOFAIL_IMPL(stem, ARGS, ZebEnData* en_data ARGS(ZEB_P), en_data ARGS(ZEB_FWD))

#define ZEB_FORTRAN_FUNCTION_NOFAIL(stem, T, ARGS)          \
  ZEB_API T stem##_(ZEB_TAIL(ARGS(ZEB_FP)) ARGS(ZEB_HID)) { \
    T zeb_result{};                                         \
    ZebEnData en;                                           \
    y90haan_(&en);                                          \
    stem##t_(&en ARGS(ZEB_FFWD));                           \
    return zeb_result;                                      \
  }

#define ZEB_FORTRAN_SUBROUTINE_NOFAIL(stem, ARGS)              \
  ZEB_API void stem##_(ZEB_TAIL(ARGS(ZEB_FP)) ARGS(ZEB_HID)) { \
    ZebEnData en;                                              \
    y90haan_(&en);                                             \
    stem##t_(&en ARGS(ZEB_FFWD));                              \
  }

// A Fortran entry written by hand, without layers: its declaration.
#define ZEB_FORTRAN_DECL(stem, ARGS) ZEB_API void stem##_(ZEB_TAIL(ARGS(ZEB_FP)) ARGS(ZEB_HID));

namespace zeb {
// The copy a Fortran entry passes for an incopy argument; it lives until the
// end of the call that receives it.
template <class T>
inline T* copy_of(const T* p, T&& tmp = T()) {
  tmp = *p;
  return &tmp;
}
}  // namespace zeb

// The callback shims of one callback signature: the internal shim (calls
// the user function only when en_data allows a direct call), the
// marshalling shim (retries on status -8888) and the traced shim.  ARGS
// lists the callback's own arguments; ADAPT(f, en_data, args...) calls the
// user function f with them.
#define ZEB_CALLBACK_SHIMS(prefix, role, tname, Fn, ARGS, ADAPT)                          \
  ZEB_API void prefix##_internal_##role##_(Fn f, ZebEnData* en_data ARGS(ZEB_P)) {        \
    zeb::cb_internal(en_data, [&] { ADAPT(f, en_data ARGS(ZEB_FWD)); });                  \
  }                                                                                       \
  ZEB_API int prefix##_marshal_##role##_(void (*m)(Fn, ZebEnData* ARGS(ZEB_T)), Fn f,     \
                                         ZebEnData* en_data ARGS(ZEB_P)) {                \
    return zeb::cb_marshal(en_data, [&] { m(f, en_data ARGS(ZEB_FWD)); });                \
  }                                                                                       \
  ZEB_API int prefix##_print_##role##_(void (*m)(Fn, ZebEnData* ARGS(ZEB_T)), Fn f,       \
                                       ZebEnData* en_data ARGS(ZEB_P)) {                  \
    if (__builtin_expect(!zeb::trace::on(), 1))                                           \
      return prefix##_marshal_##role##_(m, f, en_data ARGS(ZEB_FWD));                     \
    const zeb::trace::Arg zeb_targs[] = {zeb::trace::Arg{} ARGS(ZEB_TR)};                 \
    const int zeb_nt = int(sizeof zeb_targs / sizeof zeb_targs[0]) - 1;                   \
    zeb::trace::block(en_data, tname, 2, zeb_targs + 1, zeb_nt);                          \
    int s = prefix##_marshal_##role##_(m, f, en_data ARGS(ZEB_FWD));                      \
    zeb::trace::block(en_data, tname, 3, zeb_targs + 1, zeb_nt);                          \
    return s;                                                                             \
  }                                                                                       \
  /* What an engine calls: the traced shim, or, when that would only come */             \
  /* down to the internal shim calling the user function directly (trace */              \
  /* off, direct calls allowed), the same call inlined. */                                \
  [[maybe_unused]] static inline int prefix##_call_##role(                                \
      void (*m)(Fn, ZebEnData* ARGS(ZEB_T)), Fn f, ZebEnData* en_data ARGS(ZEB_P)) {      \
    if (__builtin_expect(m == prefix##_internal_##role##_ && en_data->direct_call == 1 &&  \
                             !zeb::trace::on(), 1)) {                                     \
      ADAPT(f, en_data ARGS(ZEB_FWD));                                                    \
      return zeb::cb_status(en_data);                                                     \
    }                                                                                     \
    return prefix##_print_##role##_(m, f, en_data ARGS(ZEB_FWD));                         \
  }

// The callback family of a user's real function of one real (the
// quadrature's integrand, the zero finder's f): the adapter prefix_fh_, which
// calls it and stores its value through retval, and the three shims, traced
// under `tname` with the arguments x, retval, iuser and ruser.
#define ZEB_REAL1_ARGS(A) \
  A(in, double, x) A(out, double, retval) A(arr, int64_t, iuser) A(arr, double, ruser)
#define ZEB_REAL1_CALLBACK(prefix, tname)                                                  \
  ZEB_API void prefix##_fh_(zeb::RealFn1 f, ZebEnData* en_data, const double* x,           \
                            double* retval, int64_t*, double*) {                           \
    zeb::call_real1(f, en_data, x, retval);                                               \
  }                                                                                        \
  ZEB_CALLBACK_SHIMS(prefix, fh, tname, zeb::RealFn1, ZEB_REAL1_ARGS, prefix##_fh_)

namespace zeb {
constexpr int32_t kCallAgain = -8888;  // a user function could not be called directly
constexpr int kUserStopStatus = 1;     // a user function asked the routine to stop

// The status a callback shim hands back to the engine: nonzero when the
// engine must stop (the user asked for it through en_data->user_stop, or a
// binding's marshalling function left a status of its own).
inline int cb_status(const ZebEnData* en) {
  return en->user_stop != 0 ? kUserStopStatus : en->callback_status;
}

template <class Call>
inline void cb_internal(ZebEnData* en, Call&& call_user) {
  if (en->direct_call == 1)
    call_user();
  else
    en->callback_status = kCallAgain;
}

template <class Call>
inline int cb_marshal(ZebEnData* en, Call&& call_marshal) {
  const int32_t saved = en->direct_call;
  call_marshal();
  while (en->callback_status == kCallAgain) {
    en->direct_call = 1;
    en->callback_status = 0;
    call_marshal();
  }
  en->direct_call = saved;
  return cb_status(en);
}

// A user's real function of one real.  The Fortran interface passes
// real(kind=8) function f(x); a C entry passes double f(double x,
// Zeb_Comm *comm) in en_data->host_function with its comm in host_handle1
// (set_c_function) and the shims call it in that form.  A C function that
// sets comm->flag negative asks the routine to stop.
typedef double (*RealFn1)(const double* x);
typedef double (*RealFnC)(double x, Zeb_Comm* comm);

inline void set_c_function(ZebEnData* en, RealFnC f, Zeb_Comm* comm) {
  comm->flag = 0;
  en->host_function = reinterpret_cast<void (*)(void)>(f);
  en->host_handle1 = comm;
}

inline void call_real1(RealFn1 f, ZebEnData* en, const double* x, double* value) {
  if (__builtin_expect(en->host_function == nullptr, 1)) {
    *value = f(x);
    return;
  }
  Zeb_Comm* comm = static_cast<Zeb_Comm*>(en->host_handle1);
  *value = reinterpret_cast<RealFnC>(en->host_function)(*x, comm);
  if (comm->flag < 0) en->user_stop = comm->flag;
}

// Runs body(eval), where eval(x, fx) evaluates a user's real function of
// one real and returns false once the user has asked to stop.  `shim(x,
// fx)` is the call through the traced shim (its status); when the
// marshalling function is the library's own internal shim (`internal`) and
// en allows direct calls, the shims come down to calling the user function
// directly, and eval does that itself unless the trace is on (the switch is
// read once, as the engine starts its calls).  The user-stop request is
// tested after every call.
template <class Shim, class Body>
inline void with_real1(bool internal, ZebEnData* en, RealFn1 f, Shim&& shim, Body&& body) {
  auto through_shims = [&](double x, double& fx) { return shim(x, fx) == 0; };
  if (!internal || en->direct_call != 1 || trace::on()) {
    body(through_shims);
  } else if (en->host_function == nullptr) {
    body([f, en](double x, double& fx) {
      fx = f(&x);
      return en->user_stop == 0;
    });
  } else {
    const RealFnC cf = reinterpret_cast<RealFnC>(en->host_function);
    Zeb_Comm* const comm = static_cast<Zeb_Comm*>(en->host_handle1);
    body([cf, comm, en](double x, double& fx) {
      fx = cf(x, comm);
      if (__builtin_expect(comm->flag < 0, 0)) en->user_stop = comm->flag;
      return en->user_stop == 0;
    });
  }
}
}  // namespace zeb

// Routines of the LAPACK shape: no errbuf and no ifail; the outcome is the
// routine's own `info` argument (0, -k for the k-th argument, k > 0 for a
// computational failure).  The engine takes en_data first (its argument
// errors are written on the error unit) and the traced layer keeps every
// exception inside the library: memory exhaustion sets info to -999,
// anything else to the internal-error value.  The Fortran entry is
// ZEB_FORTRAN_SUBROUTINE_NOFAIL.
#define ZEB_LAYERS_INFO(stem, ARGS, info)                                              \
  ZEB_API void stem##n_(ZebEnData* en_data ARGS(ZEB_P));                               \
  ZEB_API void stem##v_(ZebEnData* en_data ARGS(ZEB_P)) {                              \
    ZEB_TRACED_CALL(#stem "v", en_data, ARGS, nullptr, nullptr,                        \
                    zeb::guarded_info(info, [&] { stem##n_(en_data ARGS(ZEB_FWD)); })) \
  }                                                                                    \
  ZEB_API void stem##t_(ZebEnData* en_data ARGS(ZEB_P)) { stem##v_(en_data ARGS(ZEB_FWD)); }

namespace zeb {
template <class Call>
inline void guarded_info(int64_t* info, Call&& call) noexcept {
  try {
    call();
  } catch (const std::bad_alloc&) {
    *info = kAllocFail;
  } catch (...) {
    *info = kInternal;
  }
}
}  // namespace zeb
