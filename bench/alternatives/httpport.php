<?php
[, $port] = explode('=', rtrim(file_get_contents(__DIR__ . '/settings')));
$reply = "httpport=$port\n";
header('Content-Type: text/plain; charset=utf-8');
header('Content-Length: ' . strlen($reply));
echo $reply;
