"""The survivors that no test can see, each with its reason: ledger.toml."""
import tomllib


def read(path):
    """Reasons by what a mutant is called."""
    entries = tomllib.loads(path.read_text(encoding="utf-8")).get("mutant", []) if path.is_file() else []
    reasons = {}
    for entry in entries:
        key = entry["file"], entry["line"], entry["change"]
        if not entry["reason"].strip():
            raise ValueError(f"no reason: {key}")
        if key in reasons:
            raise ValueError(f"twice: {key}")
        reasons[key] = entry["reason"]
    return reasons


def entry(mutant):
    """What to put into the ledger for it; the reason is its writer's."""
    def quoted(text):
        return f"'{text}'" if "'" not in text else f"'''{text}'''"
    return (f"[[mutant]]\nfile = {quoted(mutant.file)}\nline = {quoted(mutant.line_text)}\n"
            f"change = {quoted(mutant.change)}\nreason = \"\"\n")


def problems(reasons, mutants, verdicts):
    """What is wrong between the ledger and a run. `mutants`: all that the product has; `verdicts`: of those that were
    tried."""
    found = []
    existing = {mutant.key() for mutant in mutants}
    for mutant, verdict in verdicts.items():
        if verdict == "survived" and mutant.key() not in reasons:
            found.append(f"survived, and is not in the ledger: {mutant.name()}")
        elif verdict != "survived" and mutant.key() in reasons:
            found.append(f"is in the ledger, but not a survivor ({verdict}): {mutant.name()}")
    for key in reasons:
        if key not in existing:
            found.append("is in the ledger, but there is no such mutant: " + " | ".join(key))
    return found
