#!/usr/bin/env python3
"""The signing step, with certificates that are thrown away and a time server of our own."""
import http.server
import subprocess
import tempfile
import threading
import unittest
from pathlib import Path

import packaged


def run(*command, **options):
    return subprocess.run([str(word) for word in command], text=True, capture_output=True, **options)


class Certificates:
    """An authority, and what it has certified: a signer of programs and a teller of time."""

    def __init__(self, folder):
        self.folder = folder
        self.authority = folder / "authority.pem"
        self.signer = folder / "signer.pfx"
        self.password_file = folder / "password"
        self.password_file.write_text("à jeter\n")
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=Throw-away authority",
                     "-days", 2, "-keyout", folder / "authority.key", "-out", self.authority)
        self.certify("signer", "codeSigning")
        self.certify("time", "critical,timeStamping")
        self.openssl("pkcs12", "-export", "-inkey", folder / "signer.key", "-in", folder / "signer.pem",
                     "-out", self.signer, "-passout", f"file:{self.password_file}")

    def openssl(self, *arguments):
        return run("openssl", *arguments, check=True)

    def certify(self, name, purpose):
        request, extensions = self.folder / f"{name}.request", self.folder / f"{name}.extensions"
        extensions.write_text(f"keyUsage = critical,digitalSignature\nextendedKeyUsage = {purpose}\n")
        self.openssl("req", "-newkey", "rsa:2048", "-nodes", "-subj", f"/CN=Throw-away {name}",
                     "-keyout", self.folder / f"{name}.key", "-out", request)
        self.openssl("x509", "-req", "-in", request, "-CA", self.authority, "-CAkey", self.folder / "authority.key",
                     "-CAcreateserial", "-days", 1, "-extfile", extensions, "-out", self.folder / f"{name}.pem")

    def tell_time(self, query):
        """The signed answer of a time server."""
        question, answer = self.folder / "time.query", self.folder / "time.answer"
        settings, serial = self.folder / "time.settings", self.folder / "time.serial"
        question.write_bytes(query)
        serial.write_text("01\n")
        settings.write_text(f"[tsa]\nserial = {serial}\ndefault_policy = 1.2.3.4\ndigests = sha256\n"
                            "signer_digest = sha256\nordering = no\ntsa_name = no\ness_cert_id_chain = no\n")
        self.openssl("ts", "-reply", "-config", settings, "-section", "tsa", "-queryfile", question,
                     "-signer", self.folder / "time.pem", "-inkey", self.folder / "time.key", "-out", answer)
        return answer.read_bytes()


class TimeServer:
    """Tells the time at `url` while the block runs."""

    def __init__(self, certificates):
        class Answer(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                answer = certificates.tell_time(self.rfile.read(int(self.headers["Content-Length"])))
                self.send_response(200)
                self.send_header("Content-Type", "application/timestamp-reply")
                self.send_header("Content-Length", str(len(answer)))
                self.end_headers()
                self.wfile.write(answer)

            def log_message(self, *_):
                pass

        self.server = http.server.HTTPServer(("127.0.0.1", 0), Answer)
        self.url = f"http://127.0.0.1:{self.server.server_port}/"

    def __enter__(self):
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.server.server_close()


class Signing(packaged.PackageTest):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.certificates = Certificates(Path(temporary.name))

    def sign(self, *options, password_file=None, check=True):
        password_file = password_file or self.certificates.password_file
        return packaged.make_package(self.folder / "dist", "--sign", self.certificates.signer, "--password-file",
                                     password_file, *options, check=check)

    def signed_program(self):
        (package,) = (self.folder / "dist").glob("*.zip")
        return self.unpack(package) / "Talvenor.exe"

    def verify(self, program):
        return run("osslsigncode", "verify", "-CAfile", self.certificates.authority,
                   "-TSA-CAfile", self.certificates.authority, "-in", program)

    def test_signed_program_is_trusted_by_who_trusts_the_authority(self):
        self.sign()
        result = self.verify(self.signed_program())
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertIn("Text description: Talvenor", result.stdout)
        self.assertIn("Message digest algorithm  : SHA256", result.stdout)
        self.assertNotIn("Timestamp Server", result.stdout)

    def test_and_not_when_one_byte_is_changed(self):
        self.sign()
        program = self.signed_program()
        content = bytearray(program.read_bytes())
        content[0x1000] ^= 1
        program.write_bytes(content)
        self.assertNotEqual(self.verify(program).returncode, 0)

    def test_under_its_signature_it_is_the_program_that_was_built(self):
        self.sign()
        bare = self.folder / "bare.exe"
        run("osslsigncode", "remove-signature", "-in", self.signed_program(), "-out", bare, check=True)
        self.assertEqual(bare.read_bytes(), packaged.program_under_test.read_bytes())

    def test_nothing_is_signed_unless_asked_for(self):
        result = self.verify(self.unpack(self.package()) / "Talvenor.exe")
        self.assertIn("No signature found", result.stdout + result.stderr)

    def test_time_of_the_server_is_in_the_signature(self):
        with TimeServer(self.certificates) as server:
            self.sign("--timestamp", server.url)
        result = self.verify(self.signed_program())
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertIn("Timestamp Server Signature verification: ok", result.stdout)

    def test_without_an_answer_of_the_server_there_is_no_package(self):
        with TimeServer(self.certificates) as server:
            gone = server.url
        self.assert_fails("could not be signed", self.sign("--timestamp", gone, check=False))

    def test_with_a_wrong_password_there_is_no_package(self):
        wrong = self.folder / "wrong"
        wrong.write_text("autre\n")
        self.assert_fails("could not be signed", self.sign(password_file=wrong, check=False))

    def test_certificate_without_password_file_is_refused(self):
        result = packaged.make_package(self.folder / "dist", "--sign", self.certificates.signer, check=False)
        self.assert_fails("go together", result)

    def assert_fails(self, reason, result):
        self.assertNotEqual(result.returncode, 0)
        self.assertIn(reason, result.stderr)
        self.assertEqual(list((self.folder / "dist").glob("*")), [])


if __name__ == "__main__":
    packaged.main()
