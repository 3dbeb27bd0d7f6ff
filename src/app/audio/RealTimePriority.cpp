#include "app/audio/RealTimePriority.h"

#include <dbus/dbus.h>
#include <sched.h>
#include <sys/resource.h>

#include <algorithm>
#include <memory>

namespace
{
struct Unref
{
    void operator() (DBusConnection* connection) const { dbus_connection_unref (connection); }
    void operator() (DBusMessage* message) const { dbus_message_unref (message); }
};

using Connection = std::unique_ptr<DBusConnection, Unref>;
using Message = std::unique_ptr<DBusMessage, Unref>;

constexpr auto kit = "org.freedesktop.RealtimeKit1", kitPath = "/org/freedesktop/RealtimeKit1";
constexpr int answerMs = 1000;

bool isRealTime (pid_t thread)
{
    const auto policy = ::sched_getscheduler (thread) & ~SCHED_RESET_ON_FORK;
    return policy == SCHED_FIFO || policy == SCHED_RR;
}

bool setByLimits (pid_t thread, int priority)
{
    sched_param parameters {};
    parameters.sched_priority = priority;
    return ::sched_setscheduler (thread, SCHED_FIFO | SCHED_RESET_ON_FORK, &parameters) == 0;
}

/** One of RealtimeKit's numbers; `missing` if the service isn't there. */
int64_t kitProperty (DBusConnection* bus, const char* name, int64_t missing)
{
    const Message call (dbus_message_new_method_call (kit, kitPath, DBUS_INTERFACE_PROPERTIES, "Get"));
    if (call == nullptr
        || !dbus_message_append_args (call.get(), DBUS_TYPE_STRING, &kit, DBUS_TYPE_STRING, &name,
                                      DBUS_TYPE_INVALID))
        return missing;
    const Message answer (dbus_connection_send_with_reply_and_block (bus, call.get(), answerMs, nullptr));
    DBusMessageIter at, inner;
    if (answer == nullptr || !dbus_message_iter_init (answer.get(), &at)
        || dbus_message_iter_get_arg_type (&at) != DBUS_TYPE_VARIANT)
        return missing;
    dbus_message_iter_recurse (&at, &inner);
    DBusBasicValue value {};
    const auto type = dbus_message_iter_get_arg_type (&inner);
    if (type != DBUS_TYPE_INT32 && type != DBUS_TYPE_INT64)
        return missing;
    dbus_message_iter_get_basic (&inner, &value);
    return type == DBUS_TYPE_INT32 ? value.i32 : value.i64;
}

/** RealtimeKit serves only processes whose threads can't hold a processor for longer than it says. */
void limitRealTime (int64_t microseconds)
{
    const auto most = static_cast<rlim_t> (std::max<int64_t> (1, microseconds));
    rlimit limit {};
    if (::getrlimit (RLIMIT_RTTIME, &limit) != 0 || limit.rlim_max <= most)
        return;
    limit.rlim_cur = std::min (limit.rlim_cur, most);
    limit.rlim_max = most;
    ::setrlimit (RLIMIT_RTTIME, &limit);
}

bool setByKit (pid_t thread, int priority)
{
    const Connection bus (dbus_bus_get (DBUS_BUS_SYSTEM, nullptr));
    if (bus == nullptr)
        return false;
    dbus_connection_set_exit_on_disconnect (bus.get(), FALSE);
    const auto most = kitProperty (bus.get(), "MaxRealtimePriority", 0);
    if (most <= 0)
        return false;
    limitRealTime (kitProperty (bus.get(), "RTTimeUSecMax", 200000));

    const auto id = static_cast<dbus_uint64_t> (thread);
    const auto granted = static_cast<dbus_uint32_t> (std::min<int64_t> (priority, most));
    const Message call (dbus_message_new_method_call (kit, kitPath, kit, "MakeThreadRealtime"));
    if (call == nullptr
        || !dbus_message_append_args (call.get(), DBUS_TYPE_UINT64, &id, DBUS_TYPE_UINT32, &granted,
                                      DBUS_TYPE_INVALID))
        return false;
    const Message answer (
        dbus_connection_send_with_reply_and_block (bus.get(), call.get(), answerMs, nullptr));
    return answer != nullptr;
}
}

bool RealTimePriority::request (pid_t thread, int priority)
{
    if (isRealTime (thread) || setByLimits (thread, priority))
        return true;
    rlimit limit {};
    const auto most = ::getrlimit (RLIMIT_RTPRIO, &limit) == 0
                          ? static_cast<int> (std::min<rlim_t> (limit.rlim_cur, 99))
                          : 0;
    return (most > 0 && setByLimits (thread, std::min (most, priority))) || setByKit (thread, priority);
}

juce::String RealTimePriority::describe (pid_t thread)
{
    sched_param parameters {};
    if (!isRealTime (thread) || ::sched_getparam (thread, &parameters) != 0)
        return "ordinary";
    return "real time, priority " + juce::String (parameters.sched_priority);
}
