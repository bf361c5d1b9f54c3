#!/bin/bash
# The interface reports and the default gateway read the real ifconfig and route output for
# addresses and routes the scenario sets up, and the configuration type from the interfaces file.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
on_device ip link set eth0 up
expect_reply "get-eth0-parameters: no address" "$(values_reply "" "" "" dhcp)$NL" \
  get-eth0-parameters A
expect_reply "get-eth0-parameters: no address, console" \
  "${CONSOLE_START}Get eth0 parameters...${NL}Interface is disable or not connected.$NL" \
  get-eth0-parameters M
expect_reply "get-default-gateway: no default route" '{"gateway":{ "value":""}}'"$NL" \
  get-default-gateway A
expect_reply "get-default-gateway: no default route, console" \
  "${CONSOLE_START}Get current default gateway...${NL}Uknown default gateway$NL" \
  get-default-gateway M

on_device ip addr add 10.0.0.5/24 broadcast + dev eth0
on_device ip route add default via 10.0.0.1 dev eth0
expect_reply "get-eth0-parameters: address and default route, no stanza" \
  "$(values_reply 10.0.0.5 255.255.255.0 10.0.0.1 dhcp)$NL" get-eth0-parameters A
printf 'source /etc/network/interfaces.d/*\nauto lo\niface lo inet loopback\n\niface eth0 inet static\n\taddress 10.0.0.5\n\tnetmask 255.255.255.0\n\tgateway 10.0.0.1\n' |
  put_file on_device /etc/network/interfaces
expect_reply "get-eth0-parameters: static stanza" \
  "$(values_reply 10.0.0.5 255.255.255.0 10.0.0.1 static)$NL" get-eth0-parameters A
expect_reply "get-eth0-parameters: static stanza, console" \
  "${CONSOLE_START}Get eth0 parameters...$NL$(values_lines 10.0.0.5 255.255.255.0 10.0.0.1 static)${NL}Get eth0 parameters done.$NL$NL" \
  get-eth0-parameters M
expect_reply "get-default-gateway: default route" '{"gateway":{ "value":"10.0.0.1"}}'"$NL" \
  get-default-gateway A
expect_reply "get-default-gateway: default route, console" \
  "${CONSOLE_START}Get current default gateway...${NL}Current gateway is: 10.0.0.1$NL" \
  get-default-gateway M

# wlan0 with an address of its own but no gateway, and a second default route behind eth0's.
on_device ip link set wlan0 up
on_device ip addr add 192.168.7.20/255.255.255.128 broadcast + dev wlan0
expect_reply "get-wlan0-parameters: address without a gateway" \
  "$(values_reply 192.168.7.20 255.255.255.128 "" dhcp)$NL" get-wlan0-parameters A
on_device ip route add default via 192.168.7.1 dev wlan0 metric 600
expect_reply "get-default-gateway: the first default route wins" \
  '{"gateway":{ "value":"10.0.0.1"}}'"$NL" get-default-gateway A

# tun0: a point-to-point address and a network routed through the far end.
expect_reply "get-tun0-parameters: no address" "$(values_reply "" "" "" dhcp)$NL" \
  get-tun0-parameters A
on_device ip addr add 10.8.0.2 peer 10.8.0.1 dev tun0
on_device ip link set tun0 up
on_device ip route add 10.9.0.0/16 via 10.8.0.1 dev tun0 onlink
expect_reply "get-tun0-parameters: point-to-point address and route" \
  "$(values_reply 10.8.0.2 255.255.255.255 10.8.0.1 dhcp)$NL" get-tun0-parameters A
expect_reply "get-tun0-parameters: console, no closing line" \
  "${CONSOLE_START}Get tun0 parameters...$NL$(values_lines 10.8.0.2 255.255.255.255 10.8.0.1 dhcp)$NL" \
  get-tun0-parameters M

on_device ip link del ppp0
expect_reply "get-ppp0-parameters: no such device" "$(values_reply "" "" "" dhcp)$NL" \
  get-ppp0-parameters A
expect_reply "get-ppp0-parameters: no such device, console" \
  "${CONSOLE_START}Get ppp0 parameters...${NL}Interface is disable or not connected.$NL" \
  get-ppp0-parameters M

lab_finish
