#pragma once

#include "machine/SerialPort.h"
#include "protocol/Table.h"

#include <array>
#include <string>

/// Values of `LinkKind`.
inline constexpr char SerialLinkKind = 'S';
inline constexpr char NetworkLinkKind = 'E';
inline constexpr char NoLinkKind = ' ';

/// The COM ports that are searched and offered: 1 to 20.
inline constexpr int LastCommPort = 20;

/// The state of both links and of the dialog that opens them. Alive for the whole run.
struct LinkState {
    char LinkKind = NoLinkKind;

    // Serial link
    int SelectedCommPort = 0; ///< port in use; another one takes its place when it has opened
    SerialDevice DeviceInUse; ///< the device that was opened as that port
    int PreviousCommPort = 0;
    int ActiveCommPort = 0;
    bool SerialPortOpen = false; ///< true after a successful open, false after a close
    bool SerialSelectedFlag = false;
    Table<int, LastCommPort> PortAvailable{"PortAvailable"}; ///< 1 where the search found a port
    int PortsFoundCount = 0;
    bool FindingPortsFlag = false;

    // Network link
    std::string RemoteIPAddress;               ///< dotted, as it is connected
    std::array<std::string, 5> IPAddressQuads; ///< 0 to 3: the address as entered
    bool IPConnectedFlag = false;              ///< the socket reported a complete connect
    bool IPLinkOpenFlag = false;               ///< the network link is up
    bool IPConnectingFlag = false; ///< a connect is under way; clearing it cancels the connect
    int ConnectAttemptCount = 0;   ///< 0 to 6
    std::string ConnectFailure;    ///< why the last attempt failed, sentences for the user
    int WaitSeconds = 0;           ///< length of the current timed wait
    bool SendCompleteFlag = false;
    bool ReplyCompleteFlag = false; ///< would end a reply wait early; nothing sets it
    bool ReplyPendingFlag = false;
    double ReplyTimeout = 0.0; ///< seconds; 0 stands for 0.8

    bool LinkShownFlag = false; ///< the displays show a link that is up
    int LinkMadeCode = 0;       ///< 1 when the connection dialog made a link
};
