#pragma once

#include <support/TlsIdentity.h>

/// The one authority that libcurl trusts in this program, instead of the system's.
const support::TlsIdentity &ownAuthority();
