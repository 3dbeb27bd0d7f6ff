#pragma once

#include <jack/jack.h>
#include <jack/midiport.h>
#include <juce_core/juce_core.h>

/** The functions of libjack that are used here, from the library that the system has: jackd's, or PipeWire's. A system
    without one has no ports of JACK. */
class JackLibrary
{
public:
    JackLibrary();

    explicit operator bool() const noexcept { return isComplete; }

    decltype (&::jack_client_open) client_open = nullptr;
    decltype (&::jack_client_close) client_close = nullptr;
    decltype (&::jack_activate) activate = nullptr;
    decltype (&::jack_deactivate) deactivate = nullptr;
    decltype (&::jack_set_process_callback) set_process_callback = nullptr;
    decltype (&::jack_set_port_registration_callback) set_port_registration_callback = nullptr;
    decltype (&::jack_on_shutdown) on_shutdown = nullptr;
    decltype (&::jack_set_error_function) set_error_function = nullptr;
    decltype (&::jack_set_info_function) set_info_function = nullptr;
    decltype (&::jack_get_ports) get_ports = nullptr;
    decltype (&::jack_free) free = nullptr;
    decltype (&::jack_port_register) port_register = nullptr;
    decltype (&::jack_port_unregister) port_unregister = nullptr;
    decltype (&::jack_port_by_id) port_by_id = nullptr;
    decltype (&::jack_port_by_name) port_by_name = nullptr;
    decltype (&::jack_port_name) port_name = nullptr;
    decltype (&::jack_port_is_mine) port_is_mine = nullptr;
    decltype (&::jack_port_get_aliases) port_get_aliases = nullptr;
    decltype (&::jack_port_name_size) port_name_size = nullptr;
    decltype (&::jack_connect) connect = nullptr;
    decltype (&::jack_port_get_buffer) port_get_buffer = nullptr;
    decltype (&::jack_midi_get_event_count) midi_get_event_count = nullptr;
    decltype (&::jack_midi_event_get) midi_event_get = nullptr;
    decltype (&::jack_midi_clear_buffer) midi_clear_buffer = nullptr;
    decltype (&::jack_midi_event_reserve) midi_event_reserve = nullptr;

private:
    bool isComplete = false;
};
