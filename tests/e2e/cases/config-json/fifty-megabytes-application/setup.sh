# Fifty megabytes of a member the tool does not read.
python3 -c 'import json; p = "/run/qv-case/config.json"; c = json.load(open(p))
c["padding"] = ["x" * 1000] * 50000; json.dump(c, open(p, "w"))'
