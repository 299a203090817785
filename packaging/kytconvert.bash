# bash completion for kytconvert
# shellcheck shell=bash

_kytconvert() {
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # Bash splits "--to=svg" into three words.
    [[ $current == = ]] && previous=${COMP_WORDS[COMP_CWORD - 1]} current=
    [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
    case $previous in
    --from)
        mapfile -t COMPREPLY < <(compgen -W "kyt kyf mol mdl sdf sd smi smiles csv tsv cdxml svg png" -- "$current")
        return
        ;;
    --to)
        mapfile -t COMPREPLY < <(compgen -W "kyt kyf mol mdl sdf sd smi smiles xyz inchi inchikey svg \
            png pdf" -- "$current")
        return
        ;;
    --background)
        mapfile -t COMPREPLY < <(compgen -W "white transparent black" -- "$current")
        return
        ;;
    --style)
        mapfile -t COMPREPLY < <(compgen -W "paper acs editor" -- "$current")
        return
        ;;
    --colors)
        mapfile -t COMPREPLY < <(compgen -W "black element drawing" -- "$current")
        return
        ;;
    --text)
        mapfile -t COMPREPLY < <(compgen -W "text paths" -- "$current")
        return
        ;;
    --columns | --legend | --width | --height | --dpi | --bond-length) return ;;
    --scale | --margin | --smiles-column | --name-column | --jobs | --time-limit) return ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-o --output --from --to --v3000 --style --colors --carbons --text \
            --columns --names --no-names --legend --width --height --dpi --bond-length --scale --margin --background \
            --layout --smiles-column --name-column --skip-errors --jobs --time-limit --check --info --json \
            --help --verbose --version" -- "$current")
        return
    fi
    local extensions='@(kyt|kyf|mol|mdl|sdf|sd|smi|smiles|csv|tsv|cdxml|svg|png)?(.gz)'
    [[ $previous == -o || $previous == --output ]] &&
        extensions='@(kyt|kyf|mol|mdl|sdf|sd|smi|smiles|xyz|inchi|inchikey|svg|png|pdf)?(.gz)'
    local extglob
    extglob=$(shopt -p extglob)
    shopt -s extglob
    mapfile -t COMPREPLY < <(
        compgen -d -- "$current"
        compgen -f -X "!*.$extensions" -- "$current"
    )
    eval "$extglob"
}
complete -o filenames -F _kytconvert kytconvert
