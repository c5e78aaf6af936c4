#pragma once

#include <QString>

/// Recognises that the user is in a call.
namespace pobblewig::CallLogic {

/// Whether an application is only in front while its user is in a call or about to be.
bool isCallApp(const QString& identifier);

/// Whether a program keeps the screen awake for a call, by the reason that it gives for it.
bool isCallReason(const QString& reason);

} // namespace pobblewig::CallLogic
