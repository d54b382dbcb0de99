/// @file
/// All of the library.
#ifndef KELCL_KELCL_H
#define KELCL_KELCL_H

#include <kelcl/dbase.h>
#include <kelcl/dbuffer.h>
#include <kelcl/ddate.h>
#include <kelcl/ddbcsbuffer.h>
#include <kelcl/derrorinfo.h>
#include <kelcl/dexception.h>
#include <kelcl/dmessagetext.h>
#include <kelcl/dnlsutil.h>
#include <kelcl/dstring.h>
#include <kelcl/dtext.h>
#include <kelcl/dtime.h>
#include <kelcl/dtrace.h>

#endif
