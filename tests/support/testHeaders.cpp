// A library that carries the headers of zanto_test_headers needs a source.
