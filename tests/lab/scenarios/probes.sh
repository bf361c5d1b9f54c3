#!/bin/bash
# The yes/no probes read what the real net-tools, ethtool and iproute2 print about interfaces the
# scenario brings up and down.
. "$(dirname "$0")/../lab.sh"
lab_start


# eth0 exists but is down: plain ifconfig leaves it out.
expect_reply "is-wired-on: eth0 down" false is-wired-on A
expect_reply "is-wired-on: eth0 down, console" \
  "${CONSOLE_START}Is ethernet enabled..."$'\n'"Ethernet is disabled."$'\n' is-wired-on M
on_device ip link set eth0 up
expect_reply "is-wired-on: eth0 up" true is-wired-on A
expect_reply "is-wired-on: eth0 up, console" \
  "${CONSOLE_START}Is ethernet enabled..."$'\n'"Ethernet is enabled."$'\n' is-wired-on M

# The cable: the peer's end of the veth pair (ethtool runs through the real sudo).
expect_reply "is-wired-linked: peer end up" true is-wired-linked A
on_peer ip link set eth0-peer down
expect_reply "is-wired-linked: peer end down" false is-wired-linked A
expect_reply "is-wired-linked: peer end down, console" \
  "${CONSOLE_START}Is ethernet linked..."$'\n'"Ethernet is not linked."$'\n' is-wired-linked M
on_peer ip link set eth0-peer up
expect_reply "is-wired-linked: peer end up again, console" \
  "${CONSOLE_START}Is ethernet linked..."$'\n'"Ethernet is linked."$'\n' is-wired-linked M

expect_reply "is-eth0-connected: up without an address" false is-eth0-connected A
on_device ip addr add 10.0.0.5/24 broadcast + dev eth0
expect_reply "is-eth0-connected: with an address" true is-eth0-connected A
expect_reply "is-eth0-connected: with an address, console" \
  "${CONSOLE_START}Is wired connected..."$'\n'"Wired is connected."$'\n' is-eth0-connected M

# wlan0 as ifconfig lists it: absent while down. (is-wlan0-connected is proven on a real radio.)
expect_reply "is-wireless-on: wlan0 down" false is-wireless-on A
on_device ip link set wlan0 up
expect_reply "is-wireless-on: wlan0 up" true is-wireless-on A

# The tunnels: the TUN devices carry a point-to-point address or none.
expect_reply "is-tun0-connected: no address" false is-tun0-connected A
on_device ip addr add 10.8.0.2 peer 10.8.0.1 dev tun0
on_device ip link set tun0 up
expect_reply "is-tun0-connected: point-to-point address" true is-tun0-connected A
expect_reply "is-tun0-connected: console" \
  "${CONSOLE_START}Is tun0 connected..."$'\n'"tun0 is connected."$'\n' is-tun0-connected M

expect_reply "is-ppp0-connected: no address" false is-ppp0-connected A
on_device ip addr add 10.64.0.7 peer 10.64.0.1 dev ppp0
expect_reply "is-ppp0-connected: point-to-point address" true is-ppp0-connected A
expect_reply "is-ppp0-connected: console keeps the tun0 label" \
  "${CONSOLE_START}Is ppp0 connected..."$'\n'"tun0 is connected."$'\n' is-ppp0-connected M
on_device ip link del ppp0
expect_reply "is-ppp0-connected: no such device" false is-ppp0-connected A

# No IPsec daemon runs here: the control command prints nothing.
expect_reply "is-ipsec-connected: no daemon" false is-ipsec-connected A
expect_reply "is-ipsec-connected: no daemon, console" \
  "${CONSOLE_START}Is ipsec connected..."$'\n'"Ipsec is not connected."$'\n' is-ipsec-connected M

lab_finish
