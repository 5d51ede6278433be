// The exceptions of the managed-object framework. They carry no data: failed reads and writes have been logged where
// they happened, and the provider turns each exception into a CIM error.
#pragma once

#include <exception>

/// Root of the framework's exceptions.
class CFG_Exception : public std::exception {};

/// No instance with the requested key, or the iteration is exhausted.
class CFG_NoInstance : public CFG_Exception {};

/// The instance manager cannot create an instance.
class CFG_InstanceCreationFailed : public CFG_Exception {};

/// The instance manager cannot delete an instance.
class CFG_InstanceDeletionFailed : public CFG_Exception {};

/// A configuration entry could not be read.
class CFG_ReadError : public CFG_Exception {};

/// A configuration entry could not be written, or the schedule could not be changed.
class CFG_WriteError : public CFG_Exception {};
