#include "px_commands.h"
#include "missing.h"
namespace n { enum E { A = 1, B } funcdef int F(int); interface I { void m(); } mixin class M { int x; } }
class C : n::I { private int p = 3; int v { get { return p; } set { p = value; } } C() {} ~C() {} void m() override final {}
  int opAdd(const C &in o) const { return p + o.p; } C@ opAssign(const C &inout o) { return this; } }
typedef int T; const array<array<int>> a = { { 1, 2 }, {}, { 0x1f, 0b11, 0o7 } }; string h = """x "y" z"""; float f = 1.5e3f;
int t(int a = 3, const string &in s = "d", C@ c = null) { try { throw("x"); } catch { return -1; } 
  switch(a) { case 1: break; default: a <<= 2; } do { a++; --a; continue; } while(a is null && !(a !is null) ^^ false);
  for(uint i = 0; i < a.length(); ++i) { auto @z = cast<C>(c); n::F @g = function(q) { return q ** 2; }; }
  return a > 1 ? a % 3 : ~a >>> 1 | a & 1; }
void OnMidiMessageReceived(const string &in name, int status, int data, int value) {} void OnTimerCallback() {} void OnStart() {} void OnStop() {}
