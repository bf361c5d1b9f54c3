# Secrets of the lab, made at run time: a throwaway CA with an authenticator and a client
# certificate, the client's PKCS#12 files, and passwords in the stored form config.json holds.
# Sourced by lab.sh.

# The device's fixed cipher key and IV for stored passwords.
LAB_STORE_KEY=3f9c0a7e51d2b846e0c7195a2bd46f83
LAB_STORE_IV=8e21d7c4096fa35b7c1e48d0f2a9365b

# Prints the stored form of a password: base64 of its AES-128-CBC ciphertext.
stored_password() { # plain
  printf '%s' "$1" | openssl enc -aes-128-cbc -K "$LAB_STORE_KEY" -iv "$LAB_STORE_IV" | base64 -w0
}

# Makes, in DIR: ca.pem; server.pem and server.key for the authenticator; client.p12 (OpenSSL 3's
# default PKCS#12 format) and client-legacy.p12 (the older RC2/3DES format), both holding the
# client's key and certificate under PASSWORD.
make_certificates() { # dir password
  local dir=$1 password=$2 name
  (
    cd "$dir" || exit 1
    ec=(-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes)
    openssl req -x509 "${ec[@]}" -keyout ca.key -out ca.pem -days 2 -subj "/CN=Lab CA" &&
      for name in server client; do
        openssl req "${ec[@]}" -keyout "$name.key" -out "$name.csr" -subj "/CN=lab-$name" &&
          openssl x509 -req -in "$name.csr" -CA ca.pem -CAkey ca.key -CAcreateserial \
            -out "$name.pem" -days 2 || exit 1
      done &&
      openssl pkcs12 -export -inkey client.key -in client.pem -certfile ca.pem \
        -passout "pass:$password" -out client.p12 &&
      openssl pkcs12 -export -legacy -inkey client.key -in client.pem -certfile ca.pem \
        -passout "pass:$password" -out client-legacy.p12
  ) >"$dir/openssl.log" 2>&1 || lab_abort "cannot make the certificates: $(cat "$dir/openssl.log")"
}

# Installs the CA and the PKCS#12 files in the device's certificate store.
install_certificates() { # dir
  local store=/KQ/configuration/certificates
  on_device cp "$1/ca.pem" "$store/cacerts/lab-ca.pem"
  on_device cp "$1/client.p12" "$1/client-legacy.p12" "$store/pkcs12/"
}
