// The option store of a handle.
#pragma once

namespace zeb::opt {

// Every option of the registry with its value; created with the handle,
// every option at its default.
class Options {};

}  // namespace zeb::opt
