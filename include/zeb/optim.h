/* ZEB numerical library: the optimisation modelling suite (chapter e04).

   A problem is held in an opaque handle: zeb_opt_handle_init (e04rac)
   creates it for nvar variables, the definition routines add its
   objective, bounds and constraints one component at a time, options are
   set by name, a solver of the suite solves it, and
   zeb_opt_handle_free (e04rzc) destroys it.  Indices are 1-based in both
   the C and the Fortran entries.  Every routine first validates the
   handle: a null handle, or one that is not a handle of the suite, fails
   with NE_HANDLE. */
#ifndef ZEB_OPTIM_H
#define ZEB_OPTIM_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The suite's own failure codes, reported in fail.code under the table's
   code of their class (fail.message begins with the name shown here). */
#define NE_HANDLE NE_OPT_NOT_INIT        /* the handle is null, foreign or corrupted */
#define NE_PHASE NE_STATE                /* not allowed in the handle's current phase */
#define NE_ALREADY_DEFINED NE_STATE      /* the component is defined already */
#define NE_REF_MATCH NE_INT_2            /* does not match what the handle holds */
#define NE_DIM_MATCH NE_INT_2            /* an array length that does not match */
#define NE_FILEID NE_INT                 /* an output or input unit that is negative */
#define NE_READ_ERROR NE_NOT_READ_FILE   /* reading is not supported, or failed */
#define NW_TRUNCATED NW_SOME_PRECISION_LOSS /* a returned text was cut to its room */

/* The type of an option's value (e04znc). */
typedef ZEB_ENUM {
  Zeb_OptionInteger = 201,
  Zeb_OptionReal = 202,
  Zeb_OptionCharacter = 203
} Zeb_OptionType;

/* ---- The handle ----------------------------------------------------- */

/* e04ra: creates a handle for a problem in nvar >= 1 variables, with no
   objective, no constraints and every option at its default.  *handle must
   be null or a handle already freed (its old value is overwritten). */
void e04rac(void **handle, Integer nvar, ZebError *fail);
void e04raf_(void **handle, const Integer *nvar, Integer *ifail);
#define zeb_opt_handle_init e04rac

/* e04rz: destroys a handle and everything it holds, and sets *handle to
   null.  A null *handle is not an error. */
void e04rzc(void **handle, ZebError *fail);
void e04rzf_(void **handle, Integer *ifail);
#define zeb_opt_handle_free e04rzc

/* e04ry: prints the sections of the problem named in cmdstr (keywords
   separated by "," or ";", any case): "OVERVIEW", "OBJECTIVE", "SIMPLE
   BOUNDS", "LINEAR CONSTRAINTS BOUNDS", "LINEAR CONSTRAINTS DETAILED",
   "NONLINEAR CONSTRAINTS BOUNDS", "NONLINEAR CONSTRAINTS DETAILED", "MATRIX
   CONSTRAINTS", "MATRIX CONSTRAINTS DETAILED", "CONE CONSTRAINTS", "CONE
   CONSTRAINTS DETAILED", "MULTIPLIERS SIZES", "OPTIONS" (the options
   changed), "ALL OPTIONS".  The report goes to the unit fileid >= 0 (6:
   standard output; a file opened with x04acc).  Every keyword is checked
   before anything is printed. */
void e04ryc(void *handle, Integer fileid, const char *cmdstr, ZebError *fail);
void e04ryf_(void **handle, const Integer *nout, const char *cmdstr, Integer *ifail,
             size_t cmdstr_len);
#define zeb_opt_handle_print e04ryc

/* e04rx: reads (ioflag = 0) an item of the handle into rarr, or writes it
   (ioflag = 1) from rarr; lrarr must be the item's size.  Items, any case:
   "PRIMAL" or "PRIMAL VARIABLES" (nvar), "DUAL" or "DUAL VARIABLES" (the
   multipliers u: see "MULTIPLIERS SIZES" of e04ry), "UC", "DUAL CONE" or
   "DUAL CONE VARIABLES" (the cone multipliers); available once a solver
   has run. */
void e04rxc(void *handle, const char *cmdstr, Integer ioflag, Integer lrarr, double rarr[],
            ZebError *fail);
void e04rxf_(void **handle, const char *cmdstr, const Integer *ioflag, const Integer *lrarr,
             double rarr[], Integer *ifail, size_t cmdstr_len);
#define zeb_opt_handle_set_get_real e04rxc

/* e04rd: reads a semidefinite problem from a file in the sparse SDPA format
   on the unit fileid (opened with x04acc): min c'x subject to
   x_1 F_1 + ... + x_m F_m - F_0 >= 0.  Returns nvar = m, c dense in cvec
   (nnzc its nonzeros), the nblk block sizes, and the matrices
   A_0 = -F_0, A_i = F_i (nnza[0..nvar] elements each, one after another in
   irowa, icola, a; rows and columns numbered through all blocks, upper
   triangles): the arguments e04rnc takes.  Capacities maxnvar (cvec; nnza
   holds maxnvar + 1; arrays of capacity 0 may be null), maxnblk and maxnnz that are too small fail with
   NE_INT_MAX naming the sizes needed, nvar and nblk set: a call with zero
   capacities asks for the sizes.  Comment lines begin with '"' or '*';
   "{ } ( ) ," separate numbers as blanks do. */
void e04rdc(Integer fileid, Integer maxnvar, Integer maxnblk, Integer maxnnz, Integer *nvar,
            Integer *nnzc, double cvec[], Integer *nblk, Integer blksizea[], Integer nnza[],
            Integer irowa[], Integer icola[], double a[], ZebError *fail);
void e04rdf_(const Integer *infile, const Integer *maxnvar, const Integer *maxnblk,
             const Integer *maxnnz, Integer *nvar, Integer *nnzc, double cvec[], Integer *nblk,
             Integer blksizea[], Integer nnza[], Integer irowa[], Integer icola[], double a[],
             Integer *ifail);
#define zeb_opt_read_sdpa e04rdc

/* ---- Options ------------------------------------------------------
   Every handle holds every option of the suite's registry (their names,
   types, defaults and limits: optim/options.inc) at its default.  Names
   and keyword values are matched in any case, with any number of blanks
   between words; names are not abbreviated.  Options may change in every
   phase but while a solver runs. */

/* e04zm: sets one option from optstr, "name = value" (the delimiter is
   " = "), or resets one ("name = Default") or all ("Defaults"). */
void e04zmc(void *handle, const char *optstr, ZebError *fail);
void e04zmf_(void **handle, const char *optstr, Integer *ifail, size_t optstr_len);
#define zeb_opt_handle_opt_set e04zmc

/* e04zn: the value of the option named in optstr: *ivalue, *rvalue, or
   cvalue (lcvalue > 1 characters with the terminating null) as *optype
   says.  A keyword longer than cvalue is returned cut, with the warning
   NW_TRUNCATED. */
void e04znc(void *handle, const char *optstr, Integer *ivalue, double *rvalue, char *cvalue,
            Integer lcvalue, Zeb_OptionType *optype, ZebError *fail);
void e04znf_(void **handle, const char *optstr, Integer *ivalue, double *rvalue, char *cvalue,
             Integer *optype, Integer *ifail, size_t optstr_len, size_t cvalue_len);
#define zeb_opt_handle_opt_get e04znc

/* e04zp: options from the lines between a line "BEGIN" and a line "END" on
   the unit fileid (opened with x04acc), one "name = value" a line; blank
   lines and lines beginning with '*' or '!' are passed over.  A failure
   names the line, and leaves every option as it was. */
void e04zpc(void *handle, Integer fileid, ZebError *fail);
void e04zpf_(void **handle, const Integer *nin, Integer *ifail);
#define zeb_opt_handle_opt_file e04zpc

/* ---- Defining the problem --------------------------------------------
   Each routine adds one component while the handle is editable (before a
   solver has run), checks every argument, and copies the arrays: the caller
   may change or free them afterwards.  Sparse matrices are in coordinate
   form (row and column indices, 1-based, each pair once; a repeated pair is
   an error, never a sum); symmetric matrices by their upper triangle.  In
   the C entries an array whose length is 0 may be null.  A bound at or
   beyond the option "Infinite Bound Size" (bigbnd) is no bound. */

/* e04re: the linear objective c'x, c dense (cvec, nvar elements).  The
   objective is defined once, by one of e04re, e04rf, e04rg, e04rm. */
void e04rec(void *handle, Integer nvar, const double cvec[], ZebError *fail);
void e04ref_(void **handle, const Integer *nvar, const double cvec[], Integer *ifail);
#define zeb_opt_handle_set_linobj e04rec

/* e04rf: the quadratic objective c'x + x'Hx/2: c sparse (nnzc >= 0 indices
   idxc, strictly ascending, and values c), H by its upper triangle (nnzh >=
   0 elements irowh, icolh, h).  With nnzh = 0 the objective is linear. */
void e04rfc(void *handle, Integer nnzc, const Integer idxc[], const double c[], Integer nnzh,
            const Integer irowh[], const Integer icolh[], const double h[], ZebError *fail);
void e04rff_(void **handle, const Integer *nnzc, const Integer idxc[], const double c[],
             const Integer *nnzh, const Integer irowh[], const Integer icolh[], const double h[],
             Integer *ifail);
#define zeb_opt_handle_set_quadobj e04rfc

/* e04rg: a nonlinear objective, evaluated by the solver's user functions;
   its gradient has nonzeros at the nnzfd >= 0 variables idxfd (strictly
   ascending). */
void e04rgc(void *handle, Integer nnzfd, const Integer idxfd[], ZebError *fail);
void e04rgf_(void **handle, const Integer *nnzfd, const Integer idxfd[], Integer *ifail);
#define zeb_opt_handle_set_nlnobj e04rgc

/* e04rm: a nonlinear least-squares objective sum r_i(x)^2 / 2 of nres >= 0
   residuals; isparse = 0: every residual may depend on every variable;
   isparse = 1: the first derivatives (variables by residuals) have nonzeros
   at the nnzrd > 0 pairs (irowrd, icolrd), irowrd in 1..nvar, icolrd in
   1..nres. */
void e04rmc(void *handle, Integer nres, Integer isparse, Integer nnzrd, const Integer irowrd[],
            const Integer icolrd[], ZebError *fail);
void e04rmf_(void **handle, const Integer *nres, const Integer *isparse, const Integer *nnzrd,
             const Integer irowrd[], const Integer icolrd[], Integer *ifail);
#define zeb_opt_handle_set_nlnls e04rmc

/* e04rh: simple bounds bl <= x <= bu (nvar elements each), once. */
void e04rhc(void *handle, Integer nvar, const double bl[], const double bu[], ZebError *fail);
void e04rhf_(void **handle, const Integer *nvar, const double bl[], const double bu[],
             Integer *ifail);
#define zeb_opt_handle_set_simplebounds e04rhc

/* e04rj: the block of linear constraints bl <= B x <= bu, once: nclin >= 0
   rows, B with nnzb > 0 elements (irowb in 1..nclin, icolb in 1..nvar, b).
   *idlc must be 0; on return it identifies the block (1). */
void e04rjc(void *handle, Integer nclin, const double bl[], const double bu[], Integer nnzb,
            const Integer irowb[], const Integer icolb[], const double b[], Integer *idlc,
            ZebError *fail);
void e04rjf_(void **handle, const Integer *nclin, const double bl[], const double bu[],
             const Integer *nnzb, const Integer irowb[], const Integer icolb[], const double b[],
             Integer *idlc, Integer *ifail);
#define zeb_opt_handle_set_linconstr e04rjc

/* e04rk: the block of nonlinear constraints bl <= g(x) <= bu, once: ncnln
   >= 0 constraints whose Jacobian has nonzeros at the nnzgd > 0 pairs
   (irowgd in 1..ncnln, icolgd in 1..nvar).  Not after the Hessian of the
   objective has been given to e04rl. */
void e04rkc(void *handle, Integer ncnln, const double bl[], const double bu[], Integer nnzgd,
            const Integer irowgd[], const Integer icolgd[], ZebError *fail);
void e04rkf_(void **handle, const Integer *ncnln, const double bl[], const double bu[],
             const Integer *nnzgd, const Integer irowgd[], const Integer icolgd[],
             Integer *ifail);
#define zeb_opt_handle_set_nlnconstr e04rkc

/* e04rl: the sparsity of a Hessian, upper triangle (nnzh > 0 pairs irowh,
   icolh in 1..nvar): idf = 0 the objective's, idf = i the i-th nonlinear
   constraint's, idf = -1 the Hessian of the Lagrangian (which excludes the
   individual ones).  Each once. */
void e04rlc(void *handle, Integer idf, Integer nnzh, const Integer irowh[], const Integer icolh[],
            ZebError *fail);
void e04rlf_(void **handle, const Integer *idf, const Integer *nnzh, const Integer irowh[],
             const Integer icolh[], Integer *ifail);
#define zeb_opt_handle_set_nlnhess e04rlc

/* e04rn: a linear matrix inequality A_0 + x_1 A_1 + ... + x_nvar A_nvar >= 0
   (positive semidefinite) of dimension dima, block diagonal with nblk
   blocks of sizes blksizea (summing to dima).  nnza[k] elements of A_k
   (k = 0 .. nvar), one matrix after another in irowa, icola, a (upper
   triangle, indices in 1..dima within the blocks; nnzasum >= sum(nnza)).
   *idblk must be 0; on return it numbers the new block (1, 2, ...). */
void e04rnc(void *handle, Integer nvar, Integer dima, const Integer nnza[], Integer nnzasum,
            const Integer irowa[], const Integer icola[], const double a[], Integer nblk,
            const Integer blksizea[], Integer *idblk, ZebError *fail);
void e04rnf_(void **handle, const Integer *nvar, const Integer *dima, const Integer nnza[],
             const Integer *nnzasum, const Integer irowa[], const Integer icola[],
             const double a[], const Integer *nblk, const Integer blksizea[], Integer *idblk,
             Integer *ifail);
#define zeb_opt_handle_set_linmatineq e04rnc

/* e04rp: bilinear terms x_qi[k] x_qj[k] Q_k (k = 1 .. nq) added to matrix
   inequality idblk of dimension dimq: nnzq[k] elements of each Q_k, one
   after another in irowq, icolq, q (upper triangle, in 1..dimq); each
   unordered pair (qi, qj) once per block. */
void e04rpc(void *handle, Integer idblk, Integer dimq, Integer nq, const Integer qi[],
            const Integer qj[], const Integer nnzq[], Integer nnzqsum, const Integer irowq[],
            const Integer icolq[], const double q[], ZebError *fail);
void e04rpf_(void **handle, const Integer *idblk, const Integer *dimq, const Integer *nq,
             const Integer qi[], const Integer qj[], const Integer nnzq[],
             const Integer *nnzqsum, const Integer irowq[], const Integer icolq[],
             const double q[], Integer *ifail);
#define zeb_opt_handle_set_quadmatineq e04rpc

/* e04rb: a cone constraint on the lgroup variables group: gtype "QUAD" or
   "Q" (x_1 >= ||x_2..||, lgroup >= 2) or "RQUAD" or "R" (2 x_1 x_2 >=
   ||x_3..||^2, lgroup >= 3), any case.  *idgroup = 0 adds a cone and
   returns its number; a cone's number redefines it.  A variable belongs to
   one cone at most. */
void e04rbc(void *handle, const char *gtype, Integer lgroup, const Integer group[],
            Integer *idgroup, ZebError *fail);
void e04rbf_(void **handle, const char *gtype, const Integer *lgroup, const Integer group[],
             Integer *idgroup, Integer *ifail, size_t gtype_len);
#define zeb_opt_handle_set_group e04rbc

/* ---- The nonlinear interior-point solver ----------------------------- */

/* The user functions of e04stc.  On entry *inform is 0; a function that
   sets it negative stops the solver (e04stc returns NE_USER_STOP with the
   point reached); one that cannot evaluate at x sets it positive and the
   solver tries a shorter step.  comm is the caller's Zeb_Comm (never read
   by the library).
   objfun: the objective value *fx at x.
   objgrd: the objective gradient at the nnzfd elements of the pattern given
           to e04rgc (idxfd), in that order.
   confun: the values gx[0 .. ncnln-1] of the nonlinear constraints.
   congrd: the nonlinear constraints' Jacobian at the nnzgd elements of the
           pattern given to e04rkc (irowgd, icolgd), in that order.
   hess:   a Hessian at the nnzh elements of its pattern from e04rlc, in
           that order: idf = -1 the Hessian of the Lagrangian
           sigma f + sum lambda[i] g_i, idf = 0 the objective's (f alone),
           idf = i the i-th nonlinear constraint's (g_i alone).
   monit:  called once per iteration with the current point and rinfo and
           stats as they stand (layout below). */
typedef void (*Zeb_E04stObjfun)(Integer nvar, const double x[], double *fx, Integer *inform,
                                Zeb_Comm *comm);
typedef void (*Zeb_E04stObjgrd)(Integer nvar, const double x[], Integer nnzfd, double fdx[],
                                Integer *inform, Zeb_Comm *comm);
typedef void (*Zeb_E04stConfun)(Integer nvar, const double x[], Integer ncnln, double gx[],
                                Integer *inform, Zeb_Comm *comm);
typedef void (*Zeb_E04stCongrd)(Integer nvar, const double x[], Integer nnzgd, double gdx[],
                                Integer *inform, Zeb_Comm *comm);
typedef void (*Zeb_E04stHess)(Integer nvar, const double x[], Integer ncnln, Integer idf,
                              double sigma, const double lambda[], Integer nnzh, double hx[],
                              Integer *inform, Zeb_Comm *comm);
typedef void (*Zeb_E04stMonit)(Integer nvar, const double x[], Integer *inform,
                               const double rinfo[], const double stats[], Zeb_Comm *comm);

/* e04st: solves the nonlinear programme defined in the handle
       minimise (or maximise, option "Task") f(x)
       subject to  bl <= x <= bu          (e04rhc)
                   bl <= B x <= bu        (e04rjc)
                   bl <= g(x) <= bu       (e04rkc)
   with Ipopt's interior-point method.  The objective is linear (e04rec),
   quadratic (e04rfc) or nonlinear (e04rgc: objfun and objgrd); none at all
   asks for a feasible point.  Nonlinear constraints need confun and
   congrd.  Exact second derivatives ("Hessian Mode" AUTO or EXACT) need
   hess and an e04rlc pattern for the nonlinear objective and for every
   nonlinear constraint, or one for the Lagrangian; "Hessian Mode" =
   APPROXIMATE uses limited-memory quasi-Newton updates instead.  Functions
   that are not needed may be null; monit may always be null.
   x[nvar]: the starting point on entry, the solution on exit.
   u[nnzu]: nnzu = 0 (no multipliers) or 2 (nvar + nclin + ncnln); on exit
     u[2j], u[2j+1] (j < nvar) are the multipliers of the lower and upper
     bound of x_j, then the same pairs for the linear constraints and then
     for the nonlinear ones, each >= 0 (the Lagrangian is
     f - sum u_lower (r - l) + sum u_upper (r - u) over the rows r).
   Constraints reach Ipopt in the order linear (B x) first, then nonlinear.
   rinfo[100]: [0] objective value, [1] constraint violation, [2] dual
     infeasibility, [3] complementarity, [4] the overall error of the
     optimality conditions (scaled), [5] barrier parameter, [6] primal step
     size, [7] dual step size; the rest 0.
   stats[100]: [0] iterations, [1] objective evaluations, [2] objective
     gradient evaluations, [3] constraint evaluations, [4] constraint
     Jacobian evaluations, [5] Hessian evaluations, [6] wall-clock seconds
     of the solve, [7] seconds spent in the user functions; the rest 0.
   Every exit of the solver once it has iterated (iteration or time limit,
   infeasible or diverging problem, user stop ...) returns x, u, rinfo and
   stats for the last point reached; argument and setup failures, an
   invalid option and too few degrees of freedom change none of them.
   Options: "Print File" and "Print Level" (the iteration log and the
   report), "Monitoring File" and "Monitoring Level" (one record per
   iteration), "Print Options", "Print Solution", "Outer Iteration Limit",
   "Stop Tolerance 1", "Suboptimal Factor", "Time Limit", "Task", "Hessian
   Mode", "Verify Derivatives", "Infinite Bound Size" and the others in
   optim/OPTIONS.md. */
void e04stc(void *handle, Zeb_E04stObjfun objfun, Zeb_E04stObjgrd objgrd,
            Zeb_E04stConfun confun, Zeb_E04stCongrd congrd, Zeb_E04stHess hess,
            Zeb_E04stMonit monit, Integer nvar, double x[], Integer nnzu, double u[],
            double rinfo[], double stats[], Zeb_Comm *comm, ZebError *fail);
#define zeb_opt_handle_solve_ipopt e04stc

#ifdef __cplusplus
}
#endif

#endif
